# What a test of the documents expects, one by one, and what came of it.
package Expectations;

use strict;
use warnings;

use Exporter 'import';
our @EXPORT = qw(expect finish);

my $count = 0;
my $failures = 0;

sub expect($$) {
    my ($found, $what) = @_;
    ++$count;
    return if $found;
    print "FAILED: $what\n";
    ++$failures;
}

# Ends the test. Were its search itself broken, there could be nothing to expect: `least` are known to be there.
sub finish {
    my ($what, $least) = @_;
    if ($count < $least) {
        print "FAILED: only $count $what\n";
        ++$failures;
    }
    print "$count $what, $failures failures\n";
    exit($failures ? 1 : 0);
}

1;
