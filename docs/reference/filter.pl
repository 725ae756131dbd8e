#!/usr/bin/perl
# Gives Doxygen our public headers as their readers understand them, without anything being written there twice.
#
# - What stands above a namespace, or above the includes of a unit's header, is about the file.
# - A comment is about all functions of its name that stand without an empty line between them, and about getter and setter
#   of one value, whichever of them it stands at; outside of classes about all that follow it without an empty line.
# - A property is described by its accessors.
# - Constructors that only take an owner, Qt's virtual functions, and what is written for Qt's colours or compares by
#   default, do the same everywhere.
# - Variables that end in an underscore are the business of the library's own classes.
use strict;
use warnings;

my @lines = <>;
chomp @lines;
my @items;       # what is declared: first and last line, indentation, run, name, documented
my $run = 0;     # declarations without an empty line between them
my $comment = -1;    # the first line of the comment that ends just above
my %owned = map { $_ => 1 } qw(event eventFilter paintEvent paintEngine resizeEvent showEvent hideEvent moveEvent contextMenuEvent
    changeEvent mousePressEvent mouseMoveEvent mouseReleaseEvent mouseDoubleClickEvent keyPressEvent focusInEvent focusOutEvent
    wheelEvent connectNotify disconnectNotify sizeHint minimumSizeHint timerEvent childEvent);

for (my $i = 0; $i < @lines; ++$i) {
    my $line = $lines[$i];
    if ($line =~ m{^\s*//}) {
        $comment = $i if $comment < 0;
        next;
    }
    if ($line =~ /^(namespace|#include)\b/ && $comment >= 0 && $lines[$comment] =~ m{^// }) {
        $lines[$_] =~ s{^//}{///} for $comment .. $i - 1;
        $lines[$comment] = "/// \\file\n$lines[$comment]";
    }
    if ($line =~ /^\s*$/ || $line =~ /^\s*([#}]|(public|protected|private|Q_SIGNALS):|namespace\b|using\b)/) {
        ++$run if $line =~ /^\s*$/ || $line =~ /:$/;
        $comment = -1;
        next;
    }
    # A declaration, with what belongs to it further to the right.
    my ($indent) = $line =~ /^( *)/;
    my $last = $i;
    my $text = $line;
    until ($text =~ /^\s*Q_\w+(\(.*\))?$/ || $text =~ /[;}]\s*(\/\/.*)?$/ && ($text =~ tr/(//) == ($text =~ tr/)//) || $text =~ /\{\s*(\/\/.*)?$/ || $last == $#lines) {
        $text .= ' ' . ($lines[++$last] =~ s/^\s+//r);
    }
    my $documented = $text =~ m{///<} || $comment >= 0 && $lines[$comment] =~ m{^\s*///};
    my $isType = $text =~ /^\s*(class|struct|enum|template\s*<[^>]*>\s*(class|struct))\b/;
    my ($name) = $text =~ /(~?\w+|operator\S+?)\s*\(/;
    push @items, {
        first => $i, last => $last, from => $documented ? $comment : -1, indent => length $indent, run => $run, name => $name,
        documented => $documented, text => $text, function => !$isType && defined $name && $text !~ /^\s*Q_(?!SLOT|INVOKABLE)/,
    };
    $comment = -1;
    $i = $last;
    # The body of a function is none of our business.
    if (!$isType && $text =~ /\{\s*$/) {
        ++$i until $lines[$i] =~ /^$indent\}/;
    }
}

# The value that a getter and a setter have in common.
sub value { return lc($_[0]) =~ s/^(get|set|is|has)(?=.)//r }

my %before;
for my $item (@items) {
    my $indent = ' ' x $item->{indent};
    my $text = $item->{text};
    if ($text =~ /Q_PROPERTY\((\S+) (\w+) READ (\w+)(?: WRITE (\w+))?/) {
        my ($type, $name, $read, $write) = ($1, $2, $3, $4);
        my $public = sub { defined $_[0] && $_[0] !~ /^(read|write)/ };
        my $doc = $type eq 'zk::ComponentRef' ? 'Refers to a component, by pointer or by name; see ComponentRef.'
            : $public->($read) && $public->($write) ? "Read by $read(), written by $write()."
            : "What $read() gives.";
        $before{$item->{first}} = "$indent/// $doc";
        next;
    }
    if ($text =~ /^ +[^(]*\w_(;| = |\{)/) {
        $lines[$_] = '' for $item->{first} .. $item->{last};
        next;
    }
    next if $item->{documented};
    if ($text =~ /^ *friend .*= default;/) {
        $before{$item->{first}} = "$indent/// Equal where all members are.";
        next;
    }
    if (!$item->{function}) {
        my ($above) = grep { $_->{from} >= 0 && $_->{run} == $item->{run} && $_->{first} < $item->{first}
            && $_->{text} =~ /^inline constexpr/ } reverse @items;
        $before{$item->{first}} = join "\n", @lines[$above->{from} .. $above->{first} - 1]
            if $above && $text =~ /^inline constexpr/;
        next;
    }
    my ($source) = grep { $_->{from} >= 0 && $_->{run} == $item->{run} && $_->{indent} == $item->{indent} && $_->{function}
        && ($_->{name} eq $item->{name} || value($_->{name}) eq value($item->{name})) } @items;
    if (!$source && $item->{indent} == 0) {
        ($source) = grep { $_->{from} >= 0 && $_->{run} == $item->{run} && $_->{first} < $item->{first} && $_->{indent} == 0
            && $_->{function} } reverse @items;
    }
    if ($source) {
        $before{$item->{first}} = join "\n", @lines[$source->{from} .. $source->{first} - 1];
    } elsif ($text =~ /^\s*explicit \w+\(QObject\* owner = nullptr\);/) {
        $before{$item->{first}} = "$indent/// `owner` deletes the component with itself; it may be null.";
    } elsif ($text =~ /^\s*explicit \w+\(QObject\* parent = nullptr\);/) {
        $before{$item->{first}} = "$indent/// `parent` deletes the object with itself; it may be null.";
    } elsif ($text =~ /\{ return ToQColor\((\w+)\(\)\); \}/) {
        $before{$item->{first}} = "$indent/// What $1() gives, for Qt.";
    } elsif ($text =~ /\{ (\w+)\(FromQColor\(\w+\)\); \}/) {
        $before{$item->{first}} = "$indent/// $1() with a colour of Qt's.";
    } elsif ($owned{$item->{name}} && $text =~ /override/) {
        $before{$item->{first}} = "$indent/// For Qt to call.";
    }
}
for my $i (0 .. $#lines) {
    print "$before{$i}\n" if defined $before{$i};
    print "$lines[$i]\n";
}
