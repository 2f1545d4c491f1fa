# messages.pl ROOT: every message that the plug-in can write to its log stands in the table of docs/user-guide.md,
# and the table has no other.
use strict;
use warnings;

use File::Basename;
use lib dirname(__FILE__);
use Sources;

my ($root) = @ARGV;
my $guide = "$root/docs/user-guide.md";
my @sources = grep { /\.(?:cpp|h)$/ } Sources::files("$root/src");
my $failures = 0;

# Of these the first argument is the format of a line.
my $writers = qr/Log|writeText/;
# Of these the last argument is a message for a line; or the last but one, with values in braces behind it.
my $reporters = qr/fail|giveUp|report|(?:m_|\w+\.)errors\.add/;
# Exceptions end up in a line with their text. (The type of an exception of the codec names its base.)
my $exceptions = qr/std::\w+_error|std::out_of_range/;

# --- What the sources say: message -> where

my %written;
sub note {
    my ($message, $path) = @_;
    $written{$message} = $path if $message ne '' && $message ne '%s';
}

# {{number, "text behind it"}, {number}} behind a text.
sub reported {
    my @arguments = @_;
    return Sources::message($arguments[-1]) unless $arguments[-1] =~ /^\s*\{/;
    my $message = Sources::message($arguments[-2]);
    $message =~ s/:$/: /;
    $message .= '…' . ($1 // '') while $arguments[-1] =~ /\{\s*[\w.]+\s*(?:,\s*"([^"]*)"\s*)?\}/g;
    return Sources::trimmed($message);
}

# What the search below would not see must not go unseen.
sub expect_known_forms {
    my ($code, $path) = @_;
    for my $call (Sources::calls($code, $writers)) {
        my $format = $call->[1][0];
        next if $format =~ /^\s*"/ || $format =~ /^(?:const char\* format|\.\.\.)$/;
        print "FAILED: $path: $call->[0]($format...) has a format that is no literal\n";
        ++$failures;
    }
    for my $thrown ($code =~ /\bthrow\s+([\w:]+)/g) {
        next if $thrown =~ /^(?:$exceptions|QuorvaneError)$/;
        print "FAILED: $path: throws $thrown, whose text is not looked for\n";
        ++$failures;
    }
}

for my $path (@sources) {
    my $code = Sources::code($path);
    expect_known_forms($code, $path);
    note(Sources::message($_->[1][0]), $path) for Sources::calls($code, qr/$writers|$exceptions/);
    note(reported(@{$_->[1]}), $path) for Sources::calls($code, $reporters);
    # The codec's calls, as its exceptions name them.
    note(Sources::message($_->[1][0]), $path) for Sources::calls($code, qr/describeCall/);
    # A message that is put together before it is written.
    while ($code =~ /(?<![\w])text = (?=std::string\(")/g) {
        my ($expression) = Sources::split_at("\0", substr($code, pos $code));
        note(Sources::message($expression), $path);
    }
}

# --- What the guide says

my %told;
my $text = Sources::content($guide);
my ($tables) = $text =~ /<!-- messages -->(.*)<!-- end of messages -->/s;
die "$guide has no table of messages between its two marks\n" unless defined $tables;
for my $row ($tables =~ /^\|(.*)$/gm) {
    my ($cell) = split /(?<!\\)\|/, $row;
    while ($cell =~ /`([^`]+)`/g) {
        my $message = Sources::trimmed($1);
        $message =~ s/\\\|/|/g;
        if ($told{$message}++) {
            print "FAILED: twice in the table: $message\n";
            ++$failures;
        }
    }
}

# --- Both ways

for my $message (sort keys %written) {
    next if $told{$message};
    print "FAILED: not in the table of $guide: $message\n    from $written{$message}\n";
    ++$failures;
}
for my $message (sort keys %told) {
    next if $written{$message};
    print "FAILED: in the table, but no longer in the sources: $message\n";
    ++$failures;
}

# Were the search itself broken, both sides could be empty.
my $count = keys %written;
if ($count < 100) {
    print "FAILED: only $count messages were found in the sources\n";
    ++$failures;
}
print "$count messages compared, $failures failures\n";
exit($failures ? 1 : 0);
