#!/usr/bin/perl
# SPDX-FileCopyrightText: 2026 The Dugwise authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Finds source files that do not begin with the two lines that name copyright and licence.
# Every file says for itself whose it is, so that it can be copied without losing its licence.
use strict;
use warnings;

use File::Basename qw(dirname);
use lib dirname(__FILE__);
use LintFiles;

my @wanted = (
    'SPDX-FileCopyrightText: 2026 The Dugwise authors',
    'SPDX-License-Identifier: GPL-3.0-or-later',
);

# Sources by their names; programs without an extension by their first line.
sub isSource
{
    my ($path, $firstLine) = @_;
    return 1 if $path =~ m{(?:^|/)CMakeLists\.txt$};
    return 1 if $path =~ /\.(?:c|cpp|h|qml|js|cmake|pl|pm|sh)(?:\.in)?$/;
    return $path !~ m{\.\w+$} && $firstLine =~ /^#!/;
}

my $root = sourceRoot();
my $checked = 0;
for my $file (filesOf($root, '')) {
    my @lines = split /\n/, readText("$root/$file");
    my $first = @lines ? $lines[0] : '';
    next if !isSource($file, $first);
    ++$checked;
    my $begin = $first =~ /^#!/ ? 1 : 0;
    for my $number (0, 1) {
        my $line = $lines[$begin + $number];
        if (!defined $line || $line !~ m{^(?://|#|/?\*)\s?\Q$wanted[$number]\E$}) {
            finding($file, $begin + $number + 1, "expected here: $wanted[$number]");
            last;
        }
    }
}
if ($checked == 0) {
    print STDERR "no source files below $root\n";
    exit 2;
}
finish();
