# versions.pl ROOT: the version that the documents name is the one in CMakeLists.txt, and the list of changes knows it.
use strict;
use warnings;

use File::Basename;
use lib dirname(__FILE__);
use Expectations;
use Sources;

my ($root) = @ARGV;
my ($version) = Sources::content("$root/CMakeLists.txt") =~ /^project\(ImporterQuorvane\s+VERSION ([\d.]+)/m;
die "CMakeLists.txt states no version\n" unless defined $version;

for my $document ("$root/README.md", grep { /\.md$/ } Sources::files("$root/docs")) {
    # The packages' names, the program's first line, and the plug-in's version on the doctor's page.
    my $text = Sources::content($document);
    while ($text =~ /(ImporterQuorvane-|^importhost |^ +version +)(\d[\d.]*\d)/gm) {
        expect($2 eq $version, substr($document, length("$root/")) . ": '$1$2' is not of version $version");
    }
}
expect(Sources::content("$root/CHANGELOG.md") =~ /^## \Q$version\E$/m, "CHANGELOG.md has no version $version");

finish('versions compared', 5);
