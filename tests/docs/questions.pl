# questions.pl ROOT: each question of docs/what-this-cannot-show.md has one row for its result, and no result is
# without its question.
use strict;
use warnings;

use File::Basename;
use lib dirname(__FILE__);
use Sources;

my ($root) = @ARGV;
my ($questions, $results) = split /^## Results$/m, Sources::content("$root/docs/what-this-cannot-show.md");
die "the page has no heading Results\n" unless defined $results;

my @asked = $questions =~ /^\| ([A-Z]\d+) \|/gm;
my @answered = $results =~ /^\| ([A-Z]\d+) \|/gm;
my $failures = 0;
if ("@asked" ne "@answered") {
    print "FAILED: the questions and their results differ\n  asked:    @asked\n  answered: @answered\n";
    ++$failures;
}
if (@asked < 30) {
    print "FAILED: only ", scalar @asked, " questions were found\n";
    ++$failures;
}
print scalar @asked, " questions, $failures failures\n";
exit($failures ? 1 : 0);
