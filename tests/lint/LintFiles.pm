# SPDX-FileCopyrightText: 2026 The Dugwise authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# What the lint checks share: which files there are, C++ without comments and strings, findings.
# Only modules of Debian's perl-base are used, so that the checks run on the barest machine.
package LintFiles;

use strict;
use warnings;

use Exporter 'import';
our @EXPORT = qw(
    sourceRoot filesOf cppFilesOf readText withoutComments withoutStrings finding finish);

my @findings;
my %noted;

# The folder to check, the one argument of every check.
sub sourceRoot
{
    my ($root) = @ARGV;
    if (@ARGV != 1 || !-d $root) {
        print STDERR "usage: $0 SOURCE_ROOT\n";
        exit 2;
    }
    return $root;
}

# Relative paths below $folder, sorted, without hidden and generated files, test data and the
# faulty samples that self-check.pl feeds to the checks.
sub filesOf
{
    my ($root, $folder) = @_;
    my @files;
    my @folders = ($folder);
    while (@folders) {
        my $current = shift @folders;
        opendir(my $handle, $current eq '' ? $root : "$root/$current") or next;
        for my $name (sort readdir $handle) {
            next if $name =~ /^\./ || $name eq 'data';
            my $path = $current eq '' ? $name : "$current/$name";
            next if $path =~ m{^build[^/]*$} || $path eq 'tests/lint/fixtures' || -l "$root/$path";
            if (-d "$root/$path") {
                push @folders, $path;
            } elsif (-f _) {
                push @files, $path;
            }
        }
        closedir $handle;
    }
    return sort @files;
}

# All C++ files of ours; a tree without any is a mistake of the caller, not a clean tree.
sub cppFilesOf
{
    my ($root) = @_;
    my @files = grep { /\.(?:cpp|h)$/ } map { filesOf($root, $_) } qw(src tests benchmarks fuzz);
    if (!@files) {
        print STDERR "no C++ files below $root\n";
        exit 2;
    }
    return @files;
}

sub readText
{
    my ($path) = @_;
    open(my $handle, '<', $path) or die "cannot read $path: $!\n";
    local $/;
    my $text = <$handle>;
    return defined $text ? $text : '';
}

# Blanks every comment and raw string, and with $blankStrings every string and character, keeping
# the lines where they are.
sub blanked
{
    my ($text, $blankStrings) = @_;
    my $newlines = sub { my ($gone) = @_; return "\n" x ($gone =~ tr/\n//); };
    $text =~ s{
        ( (?<!\w) \d (?: '?[\w.] )* )                            # a number, perhaps with 1'000
      | ( // (?: \\. | [^\n\\] )* | /\* .*? \*/ )                # a comment
      | ( (?:u8|[uUL])? R" ([^()\\\s]{0,16}) \( .*? \) \g{-1} " )  # a raw string
      | ( " (?: \\. | [^"\\\n] )* " | ' (?: \\. | [^'\\\n] )* ' )  # a string or character
    }{
        defined $1                      ? $1
      : defined $2                      ? ' ' . $newlines->($2)
      : defined $3                      ? '""' . $newlines->($3)
      : $blankStrings                   ? '""' . $newlines->($5)
      :                                   $5
    }gsex;
    return $text;
}

sub withoutComments { return blanked($_[0], 0); }
sub withoutStrings { return blanked($_[0], 1); }

# Notes one finding; the same one is noted once.
sub finding
{
    my ($file, $line, $message) = @_;
    return if $noted{"$file:$line:$message"}++;
    push @findings, [$file, $line, $message];
    return;
}

# Prints the findings as "file:line: message" and ends with 1 when there are any.
sub finish
{
    for my $found (sort { $a->[0] cmp $b->[0] || $a->[1] <=> $b->[1] } @findings) {
        print "$found->[0]:$found->[1]: $found->[2]\n";
    }
    exit(@findings ? 1 : 0);
}

1;
