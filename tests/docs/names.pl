# names.pl ROOT: what docs/architecture.md names in code style exists: every path is a file or folder of the tree, and
# every other name is a word of the code. Paths that other pages for developers name exist too.
use strict;
use warnings;

use File::Basename;
use lib dirname(__FILE__);
use Sources;

my ($root) = @ARGV;
my $document = "$root/docs/architecture.md";
my $failures = 0;

my %paths;
my %words;
for my $folder (qw(src standin tools tests fuzz bench packaging scripts cmake docs)) {
    for my $path (Sources::files("$root/$folder")) {
        my $name = substr($path, length("$root/"));
        $paths{$name} = 1;
        next if $name !~ /\.(?:cpp|h|def|map)$/ && $name !~ /CMakeLists\.txt$/;
        $words{$_} = 1 for Sources::code($path) =~ /\w+/g;
    }
}
for my $path (keys %paths) {
    $paths{$path} = 1 while ($path = dirname($path)) ne '.';
}

sub is_path { return $_[0] =~ m{/} || $_[0] =~ /\.(?:cpp|h|pl|sh|def|map|in|txt|cmake|md|json|svg)$/; }

sub path_exists {
    my ($name) = @_;
    $name =~ s{^\./}{};
    $name =~ s{/$}{};
    return 1 if $paths{$name} || -e "$root/$name";
    # A file may be named without its folders where no other bears its name: in the plug-in, or else anywhere.
    my @found = grep { m{(?:^|/)\Q$name\E$} } keys %paths;
    my @of_plugin = grep { m{^src/} } @found;
    return @of_plugin == 1 || @found == 1;
}

my $text = Sources::content($document);
$text =~ s/^```.*?^```//gms;
my %seen;
while ($text =~ /`([^`]+)`/g) {
    my $name = $1;
    next if $seen{$name}++;
    if (is_path($name)) {
        next if path_exists($name);
        print "FAILED: no such file, or several: $name\n";
    } elsif ($name =~ /^~?\w+(?:::~?\w+)*(?:\(\))?$/) {
        my @missing = grep { !$words{$_} } $name =~ /\w+/g;
        next unless @missing;
        print "FAILED: no such name in the code: $name\n";
    } else {
        print "FAILED: neither a name nor a path: $name\n";
    }
    ++$failures;
}

# The pictures are looked at too: their names of functions stand in elements of the class "code".
for my $picture ($text =~ /\]\((images\/[^)]+\.svg)\)/g) {
    my $drawing = Sources::content("$root/docs/$picture");
    for my $label ($drawing =~ /class="code"[^>]*>([^<]+)</g) {
        for my $name (split /[\s,]+/, $label) {
            my $found = is_path($name) ? path_exists($name) : !grep { !$words{$_} } $name =~ /\w+/g;
            next if $found || $seen{"$picture $name"}++;
            print "FAILED: $picture: no such name or path: $name\n";
            ++$failures;
        }
    }
}

for my $page (qw(README.md CONTRIBUTING.md docs/what-this-cannot-show.md)) {
    for my $name (Sources::content("$root/$page") =~ m{`((?:src|standin|tools|tests|fuzz|bench|packaging|scripts|docs)/[^`\s]*)`}g) {
        next if $name =~ /\*/ ? glob("$root/$name") : -e "$root/$name";
        print "FAILED: $page: no such file: $name\n";
        ++$failures;
    }
}

my $count = keys %seen;
if ($count < 60) {
    print "FAILED: only $count names were found in the document\n";
    ++$failures;
}
print "$count names looked for, $failures failures\n";
exit($failures ? 1 : 0);
