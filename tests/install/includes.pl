#!/usr/bin/perl
# Does each source and each header of the library include what it names? `includes.pl FOLDER` looks at the .h and .cpp files
# below FOLDER, which is the one that includes like <zk/host/timer.h> begin at, and says what is missing, a line for each name.
#
# For classes of Qt and those parts of C++'s library that are precompiled in most builds: with these a compiler does not tell.
# A name is there if its header is included by the file itself or by headers of this library that it includes, or if it is
# declared there ("class QWidget;"). That another library's header includes it, too, does not count.

use strict;
use warnings;

# What Qt's headers have besides the class that they are called by.
my %header_of = (
    QStringLiteral => ['QString'], QLatin1String => ['QString'], QLatin1StringView => ['QString'], QLatin1Char => ['QString'],
    QChar => ['QString'], QStringView => ['QString'], QStringList => ['QString'], QByteArrayLiteral => ['QByteArray'],
    QByteArrayList => ['QByteArray', 'QMetaObject', 'QMetaProperty'], QByteArrayView => ['QByteArray'],
    QMetaObject => ['QObject', 'QWidget', 'QMetaProperty'], QObjectList => ['QObject'], QMetaMethod => ['QObject', 'QMetaProperty'],
    QMetaType => ['QVariant'], QObject => ['QWidget', 'QWindow', 'QTimer', 'QCoreApplication'], QPointF => ['QPoint'],
    QSizeF => ['QSize'], QRectF => ['QRect'], QLineF => ['QLine'], QMarginsF => ['QMargins'], QPolygonF => ['QPolygon'],
    QRgb => ['QColor', 'QImage'], QList => ['QVector'], QSurface => ['QWindow'],
    QFileDevice => ['QFile'], QIODevice => ['QFile', 'QBuffer', 'QTemporaryFile', 'QProcess'],
    QAccessibleInterface => ['QAccessible', 'QAccessibleWidget'], QAccessibleActionInterface => ['QAccessible', 'QAccessibleWidget'],
    QAccessibleEvent => ['QAccessible'],
    QCoreApplication => ['QApplication', 'QGuiApplication'], QGuiApplication => ['QApplication'],
);
# The events of Qt GUI share a header.
my @events = map {"Q${_}Event"} qw(Mouse Wheel Key Paint Resize Show Hide Focus Enter ContextMenu Close Move Touch DragEnter Drop
    HoverMove Expose Help Input Tablet);
for my $event (@events) {
    $header_of{$event} = [grep { $_ ne $event } @events];
}
$header_of{QEvent} = [@events, 'QObject', 'QWidget', 'QCoreApplication', 'QApplication'];

my %names_of_header = (
    algorithm => [qw(sort stable_sort find find_if find_if_not any_of all_of none_of min max clamp copy copy_n copy_if fill fill_n
        remove remove_if reverse rotate count count_if lower_bound upper_bound equal_range binary_search unique min_element
        max_element minmax minmax_element mismatch transform is_sorted adjacent_find generate for_each partition
        stable_partition nth_element partial_sort merge set_union includes lexicographical_compare next_permutation)],
    array => ['array'],
    cmath => [qw(sqrt sin cos tan asin acos atan atan2 floor ceil round lround llround trunc hypot pow exp log log2 isnan
        isfinite isinf fmod remainder nextafter copysign signbit fabs ldexp frexp)],
    cstdint => [qw(int8_t int16_t int32_t int64_t uint8_t uint16_t uint32_t uint64_t uintptr_t intptr_t)],
    functional => [qw(function bind hash less greater)],
    limits => ['numeric_limits'],
    map => [qw(map multimap)],
    memory => [qw(unique_ptr shared_ptr weak_ptr make_unique make_shared enable_shared_from_this)],
    optional => [qw(optional nullopt make_optional)],
    string => [qw(string to_string)],
    vector => ['vector'],
);
for my $header (keys %names_of_header) {
    push @{ $header_of{"std::$_"} }, $header for @{ $names_of_header{$header} };
}

my $folder = shift // die "usage: includes.pl FOLDER\n";
my (%text, %includes, %declares);

sub read_file {
    my ($path) = @_;
    open my $in, '<', "$folder/$path" or die "$folder/$path: $!\n";
    my $text = do { local $/; <$in> };
    my @included;
    while ($text =~ /^#include ([<"])([^>"]+)[>"]/mg) {
        my ($quote, $name) = ($1, $2);
        if ($quote eq '"') {
            $name = ($path =~ s{[^/]+$}{}r) . $name;
            1 while $name =~ s{[^/]+/\.\./}{};
        }
        push @included, $name;
    }
    $includes{$path} = \@included;
    $text =~ s{//[^\n]*|/\*.*?\*/}{}gs;
    $text =~ s{"(?:[^"\\\n]|\\.)*"|^#include.*$}{}mg;
    $declares{$path}{$1} = 1 while $text =~ /^\s*(?:class|struct) (\w+);/mg;
    $text{$path} = $text;
    return;
}

# What a file can name: headers, by the names that they are included by, and what is declared.
sub at_hand {
    my ($path) = @_;
    my %at_hand;
    my @open = ($path);
    while (defined(my $file = shift @open)) {
        next if $at_hand{$file}++ or !$includes{$file};
        push @open, @{ $includes{$file} };
        $at_hand{$_} = 1 for keys %{ $declares{$file} };
    }
    return \%at_hand;
}

my @folders = ('');
while (defined(my $below = shift @folders)) {
    opendir my $dir, "$folder/$below" or die "$folder/$below: $!\n";
    for my $entry (sort readdir $dir) {
        next if $entry =~ /^\./;
        my $path = $below eq '' ? $entry : "$below/$entry";
        if (-d "$folder/$path") {
            push @folders, $path;
        }
        elsif ($path =~ /\.(h|cpp)$/) {
            read_file($path);
        }
    }
}
my ($names, $missing) = (0, 0);
for my $path (sort keys %text) {
    my $at_hand = at_hand($path);
    my %seen;
    while ($text{$path} =~ /\b(Q[A-Z]\w*[a-z]\w*|std::\w+)\b/g) {
        my $name = $1;
        my @headers = @{ $header_of{$name} // [] };
        push @headers, $name unless $name =~ /^std::/;
        next if !@headers or $seen{$name}++;
        ++$names;
        next if grep { $at_hand->{$_} } @headers;
        print "$path names $name and includes no header that has it\n";
        ++$missing;
    }
}
my $files = keys %text;
print "$names names in $files files, $missing without their header\n";
exit($missing != 0 || $files < 20);
