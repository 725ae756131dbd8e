#!/usr/bin/perl
# blocks.pl <file>...: one source of all C++ examples in the documentation and in the comments of headers.
#
# Includes go to the top, the rest of each example into a namespace of its own. One that is not a program but a part of a
# function has `<!-- a part of a function -->` on the line above it; those in comments of headers always are. It finds a
# form and a few components there, as a reader would have them.
use strict;
use warnings;

my (@includes, @bodies);

sub example {
    my ($file, $line, $part, @text) = @_;
    my $number = @bodies + 1;
    my @rest;
    push @rest, /^#include/ ? (push(@includes, $_), '')[1] : $_ for @text;
    my $name = $file =~ s{.*/(?=[^/]+/[^/]+$)}{}r;
    push @bodies, "namespace example_$number {\nusing namespace around;\n"
        . ($part ? "int part() {\n" : '') . "#line $line \"$name\"\n" . join("\n", @rest) . "\n"
        . ($part ? "return 0;\n}\n" : '') . "}\n";
}

for my $file (@ARGV) {
    open my $in, '<', $file or die "$file: $!\n";
    my ($begin, $part, $before, @text) = (0, 0, '');
    while (my $line = <$in>) {
        chomp $line;
        if ($file =~ /\.h$/) {
            next if $line !~ s{^\s*/// ?}{};
        }
        if (!$begin && $line =~ /^```(cpp)?$/ && ($1 || $file =~ /\.h$/)) {
            ($begin, $part, @text) = ($. + 1, $file =~ /\.h$/ || $before eq '<!-- a part of a function -->');
        } elsif ($begin && $line eq '```') {
            example($file, $begin, $part, @text);
            $begin = 0;
        } elsif ($begin) {
            push @text, $line;
        }
        $before = $line if $line ne '';
    }
    die "$file: an example without an end\n" if $begin;
}
die "no examples were found\n" if !@bodies;

my %seen;
print "$_\n" for grep { !$seen{$_}++ } @includes;
print <<'CPP', @bodies;
#include <zk/_zkdevice.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>
#include <zk/forms.h>

#include <QDebug>
#include <memory>
#include <vector>

namespace around {
extern QWidget* form;
extern QWidget* panel;
extern zk::TZKOglControl* control;
extern zk::TZkOglCanvas* canvas;
extern zk::TZKOglScene* scene;
extern zk::TZKOglScene* wheels;
extern zk::TZKOglPlane* plane;
extern zk::TTexture* texture;
extern zk::TZkOglTimer* timer;
extern zk::TXYZARRAY outline;
extern std::vector<zk::TZKOglBox*> boxes;
}
CPP
