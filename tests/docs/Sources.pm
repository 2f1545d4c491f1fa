# What the tests of the documents know of C++: where comments and strings end, and which text a message has.
package Sources;

use strict;
use warnings;

my $string = qr/"(?:[^"\\\n]|\\.)*"/;
my $character = qr/'(?:[^'\\\n]|\\.)+'/;

sub content {
    my ($path) = @_;
    open(my $file, '<:raw', $path) or die "$path: $!\n";
    local $/;
    my $text = <$file> // '';
    $text =~ s/\r\n/\n/g;
    return $text;
}

# All files below a folder, in a fixed order.
sub files {
    my ($folder) = @_;
    opendir(my $list, $folder) or die "$folder: $!\n";
    my @names = sort grep { !/^\.\.?$/ } readdir $list;
    return map { -d "$folder/$_" ? files("$folder/$_") : "$folder/$_" } @names;
}

# The code without its comments.
sub code {
    my ($path) = @_;
    my $text = content($path);
    $text =~ s{($string|$character|\d'\d)|//[^\n]*|/\*.*?\*/}{defined $1 ? $1 : ' '}gse;
    return $text;
}

# All places where one of the functions is called: from the name on, [name, [arguments]]. The arguments are texts.
sub calls {
    my ($code, $functions) = @_;
    my @calls;
    while ($code =~ /(?<![\w])($functions)\s*\(/g) {
        my ($name, $start) = ($1, pos $code);
        push @calls, [$name, [arguments(substr($code, $start))]];
        pos($code) = $start;
    }
    return @calls;
}

# What stands between here and the closing parenthesis, split at its commas.
sub arguments {
    my ($code) = @_;
    return split_at(',', $code);
}

# Splits at a character outside of strings and brackets, up to the bracket or semicolon that ends the text.
sub split_at {
    my ($separator, $code) = @_;
    my @parts = ('');
    my $depth = 0;
    while ($code =~ /\G($string|$character|.)/gs) {
        my $token = $1;
        if ($token =~ /^[(\[{]$/) {
            ++$depth;
        } elsif ($token =~ /^[)\]}]$/) {
            last if $depth-- == 0;
        } elsif ($token eq ';' && $depth == 0) {
            last;
        } elsif ($token eq $separator && $depth == 0) {
            push @parts, '';
            next;
        }
        $parts[-1] .= $token;
    }
    return @parts;
}

# The message that an expression makes: its literals as they are written, and an ellipsis for each computed part.
# Empty when it has no literal.
sub message {
    my ($expression) = @_;
    my $message = '';
    my $literals = 0;
    for my $part (split_at('+', $expression)) {
        my $inner = $part;
        $inner =~ s/^\s*std::string\s*\((.*)\)\s*$/$1/s;
        if ($inner =~ /^\s*(?:$string\s*)+$/) {
            ++$literals;
            $message .= $1 while $inner =~ /"((?:[^"\\\n]|\\.)*)"/g;
        } elsif ($message !~ /\x{e2}\x{80}\x{a6}$/) {
            $message .= "\x{e2}\x{80}\x{a6}";
        }
    }
    return $literals ? trimmed($message) : '';
}

# Ends of messages do not count: the line that shows a message ends there anyway.
sub trimmed {
    my ($message) = @_;
    $message =~ s/(?:\\n|\s)+$//;
    $message =~ s/\\"/"/g;
    return $message;
}

1;
