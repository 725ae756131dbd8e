#!/usr/bin/perl
# names.pl <source tree>: what the documents name is there: the files that they link and show, the folders of the README's
# tree, the commands of ./dev and its presets, and the units and names in the picture of the architecture. Prints what is
# not, and fails then.
use strict;
use warnings;
use File::Basename qw(dirname);

my $root = shift or die "names.pl <source tree>\n";
chdir $root or die "$root: $!\n";
my ($wrong, %count) = (0);

sub slurp { local (@ARGV, $/) = @_; return <> }

sub check {
    my ($kind, $good, $where, $what) = @_;
    ++$count{$kind};
    return if $good;
    print "$where: there is no $kind \"$what\"\n";
    ++$wrong;
}

my @documents;
my @folders = ('.');
while (defined(my $folder = shift @folders)) {
    push @documents, map { s{^\./}{}r } glob "$folder/*.md";
    push @folders, grep { -d && !-l && !m{^\./(build|shared)} } glob "$folder/*";
}
my $dev = slurp('dev');
my ($main) = $dev =~ /^main\(\) \{(.*?)^\}/ms;
my %commands = map { $_ => 1 } map { split / \| / } $main =~ /^        ([a-z| -]+)\)/mg;
my %presets = map { $_ => 1 } slurp('CMakePresets.json') =~ /"name": "([^"]+)"/g;

for my $document (sort @documents) {
    my $text = slurp($document);
    my $folder = dirname($document);
    while ($text =~ /\]\(([^)\s]+)\)/g) {
        my $target = $1;
        next if $target =~ m{^(https?:|mailto:|#)};
        $target =~ s/#.*//;
        check('file', -e "$folder/$target", $document, $target);
    }
    check('command of ./dev', $commands{$1}, $document, $1) while $text =~ m{\./dev ([a-z]+)}g;
    check('preset', $presets{$1}, $document, $1) while $text =~ m{`\./dev (?:test|build) ([a-z]+)`}g;
    while ($text =~ m{`((?:src|docs|examples|tests|designer|tools|benchmarks|cmake|fuzz)/[\w./-]*\w)`}g) {
        check('file', -e $1, $document, $1) if $document ne 'CHANGELOG.md'; # which tells of what has been, too
    }
}

# The tree in the README: folders at the left, those of units below src/zk.
my ($tree) = slurp('README.md') =~ m{^## What is where\n+```\n(.*?)^```}ms or die "README.md has no tree\n";
my %told;
for (split /\n/, $tree) {
    check('folder', -d $1, 'README.md', $1) if m{^(\w\S*)/ };
    check('unit', -d "src/zk/$1", 'README.md', $1), $told{$1} = 1 if /^  (\w+) /;
}
my $picture = slurp('docs/architecture.svg');
my ($names) = $picture =~ m{<g class="name">(.*?)</g>}s or die "docs/architecture.svg has no names of units\n";
my %drawn = map { $_ => 1 } $names =~ m{<text[^>]*>([^<]+)</text>}g;
for my $unit (grep { -f "$_/CMakeLists.txt" } glob 'src/zk/*') {
    $unit =~ s{.*/}{};
    check('unit in the tree', $told{$unit}, 'README.md', $unit);
    check('unit', delete $drawn{$unit}, 'docs/architecture.svg', $unit);
}
check('unit', 0, 'docs/architecture.svg, though not in src/zk', $_) for sort keys %drawn;

# What the steps of the roads are called.
my $sources = join '', map { slurp($_) } glob('src/zk/*/*.h'), glob('src/zk/*/*.cpp');
while ($picture =~ m{<g class="code">(.*?)</g>}sg) {
    my $steps = $1;
    while ($steps =~ m{<text[^>]*>([^<]+)</text>}g) {
        check('name', scalar($sources =~ /\b$_\b/), 'docs/architecture.svg', $_) for $1 =~ /[A-Za-z]\w*/g;
    }
}

$count{$_} or die "no $_ was found to be looked at\n" for 'file', 'command of ./dev', 'preset', 'folder', 'unit', 'name';
print join(', ', map { "$count{$_} of kind \"$_\"" } sort keys %count), "\n";
exit !!$wrong;
