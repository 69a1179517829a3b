#!/usr/bin/perl
# SPDX-FileCopyrightText: 2026 The Dugwise authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Finds C++ that clang-format would write differently (its program: $CLANG_FORMAT or clang-format).
# One tool decides on layout, so that reviews and diffs are about the code.
use strict;
use warnings;

use File::Basename qw(dirname);
use lib dirname(__FILE__);
use LintFiles;

my $root = sourceRoot();
my @files = cppFilesOf($root);
my $program = $ENV{CLANG_FORMAT} || 'clang-format';

# Its complaints come on standard error, each followed by the line and a caret.
chdir $root or die "cannot enter $root: $!\n";
my $pid = open(my $output, '-|') // die "cannot fork: $!\n";
if ($pid == 0) {
    open(STDERR, '>&', \*STDOUT) or die "cannot redirect: $!\n";
    exec($program, '--style=file', '--dry-run', '-Werror', @files) or exit 127;
}
my $found = 0;
my @rest;
while (my $line = <$output>) {
    if ($line =~ /^(.*?):(\d+):\d+: error: (.*?)(?: \[.*\])?$/) {
        finding($1, $2, $3);
        $found = 1;
    } else {
        push @rest, $line;
    }
}
close $output;
if ($? != 0 && !$found) {
    print STDERR "$program failed\n", @rest;
    exit 2;
}
finish();
