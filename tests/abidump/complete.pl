# complete.pl ROOT: checks that docs/abi.txt has every record of src/sdk with every member, every enumerator and every
# suite. A test compares that text with abidump's output, so neither can be incomplete.
use strict;
use warnings;

my ($root) = @ARGV;
my $failures = 0;
my $count = 0;

sub content {
    open(my $file, '<', $_[0]) or die "$_[0]: $!\n";
    local $/;
    return <$file>;
}

# The prototype evaluates a match in scalar context: in list context a failed match would pass no argument.
sub expect($$) {
    my ($found, $what) = @_;
    ++$count;
    return if $found;
    print "FAILED: not in docs/abi.txt: $what\n";
    ++$failures;
}

my $text = content("$root/docs/abi.txt");

# Names that only we declare, and no host's header.
my %own = map { $_ => 1 } qw(kDataSampleKeyFrame kExceptionResult IMPORTMOD_VERSION_17 IMPORTMOD_VERSION_18
    IMPORTMOD_VERSION_23);

for my $path (glob("$root/src/sdk/*.h")) {
    my $code = content($path);
    $code =~ s{//[^\n]*}{}g;

    while ($code =~ /\bstruct (\w+) \{(.*?)\n\};/gs) {
        my ($record, $body) = ($1, $2);
        my ($members) = $text =~ /^\Q$record\E: \d+ bytes\n((?: +.*\n)+)/m;
        expect(defined $members, $record);
        next unless defined $members;
        for my $statement (split /;/, $body) {
            $statement =~ s/\s*=.*//s;
            my @names = $statement =~ /\(\*(\w+)(?:\[\d+\])?\)/ ? ($1)
                : map { /(\w+)(?:\[\w+\])?\s*$/ ? ($1) : () } split /,/, $statement;
            expect($members =~ /^ +\d+ +\d+  \Q$_\E$/m, "${record}::$_") for @names;
        }
    }
    while ($code =~ /\benum (\w+) : \w+ \{(.*?)\}/gs) {
        my ($enumeration, $body) = ($1, $2);
        $body =~ s/^#.*//mg;
        expect($text =~ /^ *\w+  \Q$_\E$/m, "$enumeration: $_") for $body =~ /(\w+) = /g;
    }
    while ($code =~ /^ *ROW\((\w+),/gm) {
        expect($text =~ /^ *\w+  PrPixelFormat_\Q$1\E$/m, "PrPixelFormat: $1");
    }
    while ($code =~ /\binline constexpr (\w+) (\w+)(\[\])? = ("[^"]*"|\w+);/g) {
        my ($type, $name, $value) = ($1, $2, $4);
        next if $own{$name};
        my $is_version = $name =~ /SuiteVersion\d*$/;       # part of its suite's line
        expect($type eq 'char' ? $text =~ /  \Q$value\E  / : $text =~ /^ +\d+  \Q$name\E$/m, $name) unless $is_version;
    }
    while ($code =~ /^using (\w+) = /gm) {
        expect($text =~ /^ +\d+  \Q$1\E$/m, $1);
    }
}

if ($count < 500) {
    print "FAILED: only $count names were found in src/sdk\n";
    ++$failures;
}
print "$count names looked for, $failures failures\n";
exit($failures ? 1 : 0);
