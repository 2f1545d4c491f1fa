# workflow.pl ROOT: what the build service's workflow calls exists: presets, files of the tree, programs and libraries
# of a build, subcommands of importhost, packages, artifacts of earlier jobs.
use strict;
use warnings;

use File::Basename;
use lib dirname(__FILE__);
use Expectations;
use Sources;

my ($root) = @ARGV;
my $workflow = Sources::content("$root/.github/workflows/ci.yml");
$workflow =~ s/^\s*#.*//gm;
my $presets = Sources::content("$root/CMakePresets.json");
my $cmake = join '', map { Sources::content($_) } grep { /CMakeLists\.txt$/ } map { Sources::files("$root/$_") }
    qw(src standin tools);
my $subcommands = Sources::content("$root/tools/importhost/commands/CommandLine.cpp");

sub is_target { return $cmake =~ /add_(?:executable|library)\(\Q$_[0]\E\s/; }

expect($presets =~ /"name": "\Q$_\E"/, "no preset $_") for $workflow =~ /--preset ([\w-]+)/g;
expect($presets =~ /"name": "\Q$_\E"/, "no preset $_") for $workflow =~ m{\bbuild[/\\](?!logs)([\w-]+)}g;
expect(-e "$root/$_", "no file $_") for map { tr{\\}{/}r } $workflow =~ m{(?<![\w./\\-])(\./check|docs[/\\][\w.]+|scripts/[\w/-]+)}g;
expect(is_target($_), "no program $_") for $workflow =~ m{\bbin[/\\](\w+)\s}g;
for my $file ($workflow =~ /\b((?:importhost|ImporterQuorvane|quorvane_common64)\.\w+)/g) {
    expect(is_target($file =~ s/\..*//r), "no target for $file");
}
expect($subcommands =~ /\{"\Q$_\E", /, "no subcommand $_") for $workflow =~ /importhost(?:\.exe)?"? (\w+)(?![\w\/])/g;
my %uploaded = map { $_ => 1 } $workflow =~ /upload-artifact@\w+\n(?:\s+if: .*\n)?\s+with:\n\s+name: ([\w-]+)/g;
expect($uploaded{$_}, "no artifact $_") for $workflow =~ m{\bartifacts/(\w+)}g,
    $workflow =~ /download-artifact@\w+\n\s+with:\n\s+name: ([\w-]+)/g;
expect($workflow =~ /^  \Q$_\E:\n/m, "no job $_") for map { split /,\s*/ } $workflow =~ /needs: \[?([\w, ]+)/g;

finish('names looked for', 30);
