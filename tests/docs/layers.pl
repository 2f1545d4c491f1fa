# layers.pl ROOT: the modules of docs/architecture.md against the code. Each folder of tools and standin has a row and
# includes only what the row allows, directly or through the rows of what it may use. No module uses itself in this way.
use strict;
use warnings;

use File::Basename;
use lib dirname(__FILE__);
use Expectations;
use Sources;

my ($root) = @ARGV;

# Module => modules that it may use. A floor of src may use the one below it.
my %uses;
my @floors = map { "src/$_" } qw(sdk text log fileio avi host codec importer);
$uses{$floors[$_]} = [$floors[$_ - 1]] for 1 .. $#floors;
for my $line (split /\n/, Sources::content("$root/docs/architecture.md")) {
    my ($module, $used) = $line =~ /^\| `((?:tools|standin)[\w\/]*)` \| ((?:`[\w\/]+` ?)*)\|/ or next;
    $uses{$module} = [$used =~ /`([^`]+)`/g];
}

# All that a module may use, as keys.
sub reachable {
    my ($module, $found) = @_;
    for my $used (@{ $uses{$module} // [] }) {
        reachable($used, $found) unless $found->{$used}++;
    }
    return $found;
}

# The folder of an included file, empty for one that is made by the build or stands beside its includer.
sub module_of {
    my ($path) = @_;
    for my $place ('tools', 'src', '.') {
        return dirname($place eq '.' ? $path : "$place/$path") if $path =~ m{/} && -f "$root/$place/$path";
    }
    return '';
}

my %has_sources;
for my $file (grep { /\.(?:h|cpp)$/ } map { Sources::files("$root/$_") } qw(tools standin)) {
    my $name = substr($file, length("$root/"));
    my $module = dirname($name);
    $has_sources{$module} = 1;
    my $allowed = reachable($module, { $module => 1, '' => 1 });
    for my $path (Sources::content($file) =~ /^#include "([^"]+)"/mg) {
        my $used = module_of($path);
        expect($allowed->{$used}, "$name includes $path, but $module may not use $used");
    }
}
for my $module (grep { !/^src/ } sort keys %uses) {
    expect($has_sources{$module}, "docs/architecture.md names $module, which has no sources");
    expect(!reachable($module, {})->{$module}, "$module uses itself through others");
}
expect($uses{$_}, "docs/architecture.md does not name $_") for sort keys %has_sources;

finish('includes and modules', 800);
