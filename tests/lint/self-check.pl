#!/usr/bin/perl
# SPDX-FileCopyrightText: 2026 The Dugwise authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Feeds each lint check its samples: it must find exactly the marked lines, and nothing else. A
# check that misses what it is for looks just like a check that passes.
#
# In fixtures/CHECK a faulty line ends in "bad:" and a part of the message it must get, behind the
# comment sign of its language. The check for formatting takes part when $CLANG_FORMAT is set.
use strict;
use warnings;

use File::Basename qw(dirname);
use File::Temp qw(tempdir);
use lib dirname(__FILE__);
use LintFiles;

my $here = sourceRoot() . '/tests/lint';
my $failures = 0;

# Own counting: a fault of the module that the checks share must not silence this one.
sub failed
{
    my ($message) = @_;
    print "$message\n";
    ++$failures;
    return;
}

# Runs a check over a tree; gives its exit code and its lines.
sub run
{
    my ($check, $tree) = @_;
    open(my $output, '-|', $^X, "$here/$check.pl", $tree) or die "cannot run $check: $!\n";
    my @lines = <$output>;
    close $output;
    chomp @lines;
    return ($? >> 8, @lines);
}

# The marked lines of a tree: "path:line" => a part of the message.
sub marksIn
{
    my ($tree) = @_;
    my %marks;
    for my $path (filesOf($tree, '')) {
        my $number = 0;
        for my $line (split /\n/, readText("$tree/$path")) {
            ++$number;
            $marks{"$path:$number"} = $1 if $line =~ m{(?://|\#) bad: (.+)$};
        }
    }
    return %marks;
}

# Compares what a check says of its samples with their marks.
sub checkSamples
{
    my ($check) = @_;
    my %marks = marksIn("$here/fixtures/$check");
    my ($status, @lines) = run($check, "$here/fixtures/$check");
    failed("tests/lint/$check.pl:1: has no marked samples") if !%marks;
    failed("tests/lint/$check.pl:1: ends with $status over its samples, not 1") if $status != 1;
    my %missed = %marks;
    for my $line (@lines) {
        my ($place, $message) = $line =~ /^([^:]+:\d+): (.+)$/;
        if (!defined $place) {
            failed("tests/lint/$check.pl:1: prints '$line'");
        } elsif (!defined $marks{$place}) {
            failed("tests/lint/fixtures/$check/$place: flagged but not marked: $message");
        } elsif (index($message, $marks{$place}) >= 0) {
            delete $missed{$place};
        }
    }
    for my $place (sort keys %missed) {
        failed("tests/lint/fixtures/$check/$place: not flagged as marked: $missed{$place}");
    }
    return;
}

# Clean code passes; a tree without sources is refused, lest a wrong path look like clean code.
sub checkEnds
{
    my ($check) = @_;
    my ($status, @lines) = run($check, "$here/fixtures/clean");
    if ($status || @lines) {
        failed("tests/lint/$check.pl:1: ends with $status over clean code: @lines");
    }
    open(my $saved, '>&', \*STDERR) or die "cannot keep standard error: $!\n";
    open(STDERR, '>', '/dev/null') or die "cannot silence standard error: $!\n";
    my ($emptyStatus) = run($check, tempdir(CLEANUP => 1));
    my ($absentStatus) = run($check, "$here/fixtures/absent");
    open(STDERR, '>&', $saved) or die "cannot restore standard error: $!\n";
    failed("tests/lint/$check.pl:1: accepts a folder without sources") if $emptyStatus != 2;
    failed("tests/lint/$check.pl:1: accepts a folder that is not there") if $absentStatus != 2;
    return;
}

my @checks = qw(include-direction coroutine-forms spdx);
push @checks, 'formatting' if $ENV{CLANG_FORMAT};
for my $check (@checks) {
    checkSamples($check);
    checkEnds($check);
}
exit($failures ? 1 : 0);
