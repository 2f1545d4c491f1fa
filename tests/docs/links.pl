# links.pl ROOT: every link of a document to a file or a picture of the tree, and to a heading, leads somewhere.
use strict;
use warnings;

use File::Basename;
use lib dirname(__FILE__);
use Sources;

my ($root) = @ARGV;
my $failures = 0;
my $count = 0;

# The anchors that a page gives to its headings.
sub anchors {
    my ($text) = @_;
    $text =~ s/^```.*?^```//gms;
    my %anchors;
    for my $heading ($text =~ /^#+\s+(.*?)\s*$/gm) {
        my $anchor = lc $heading;
        $anchor =~ s/[^\w\s-]//g;
        $anchor =~ s/\s/-/g;
        $anchors{$anchor} = 1;
    }
    return \%anchors;
}

my @documents = grep { /\.md$/ } Sources::files("$root/docs");
push @documents, map { "$root/$_" } qw(README.md CHANGELOG.md CONTRIBUTING.md);
for my $document (@documents) {
    my $text = Sources::content($document);
    (my $prose = $text) =~ s/^```.*?^```//gms;
    while ($prose =~ /\]\(([^)\s]+)\)/g) {
        my $link = $1;
        next if $link =~ /^[a-z]+:/;
        ++$count;
        my ($file, $anchor) = split /#/, $link, 2;
        my $target = $file eq '' ? $document : dirname($document) . "/$file";
        my $good = -e $target && (!defined $anchor || anchors(Sources::content($target))->{$anchor});
        next if $good;
        print "FAILED: ", substr($document, length("$root/")), ": the link $link leads nowhere\n";
        ++$failures;
    }
}

if ($count < 20) {
    print "FAILED: only $count links were found\n";
    ++$failures;
}
print "$count links followed, $failures failures\n";
exit($failures ? 1 : 0);
