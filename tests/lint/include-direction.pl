#!/usr/bin/perl
# SPDX-FileCopyrightText: 2026 The Dugwise authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Finds includes that point up the layers of src/, or at no file of ours, and QML in lower layers.
# The layers stay testable one by one only as long as no lower one knows a higher one.
use strict;
use warnings;

use File::Basename qw(dirname);
use lib dirname(__FILE__);
use LintFiles;

# Where each layer lies; the first pattern that a path below src/ matches names its layer.
my @layers = (
    [records => qr{^Models/Records/}],
    [utilities => qr{^Utilities/}],
    [platform => qr{^Platform/}],
    [services => qr{^Services/}],
    [models => qr{^Models/}],
    [commandLine => qr{^CommandLine/}],
    [views => qr{^Views/}],
    [helpers => qr{^Helpers/}],
    [entry => qr{^DugwiseApp\.}],
    [application => qr{^(?:Application/|main\.cpp$)}],
);

# The layers that each may include, beside itself.
my @upToServices = qw(records utilities platform services);
my %below = (
    records => [],
    utilities => [qw(records)],
    platform => [qw(records utilities)],
    services => [qw(records utilities platform)],
    models => [@upToServices],
    commandLine => [@upToServices, 'models'],
    views => [@upToServices, 'models'],
    helpers => [qw(records utilities platform)],
    entry => [@upToServices, 'models'],
    application => [map { $_->[0] } @layers],
);
my %freeOfQml = map { $_ => 1 } @upToServices, 'helpers';

sub layerOf
{
    my ($path) = @_;
    for my $layer (@layers) {
        return $layer->[0] if $path =~ $layer->[1];
    }
    return undef;
}

# What moc makes of a file beside the including one: "moc_X.cpp" of X.h, "X.moc" of X.cpp.
sub isGenerated
{
    my ($root, $file, $target) = @_;
    my $source = $target =~ /^moc_(\w+)\.cpp$/ ? "$1.h" : $target =~ /^(\w+)\.moc$/ ? "$1.cpp" : '';
    return $source ne '' && -f "$root/" . dirname($file) . "/$source";
}

# Whether a project path names a file, or one that CMake writes from its .in file.
sub isProjectFile
{
    my ($path) = @_;
    return -f $path || -f "$path.in";
}

sub checkProjectInclude
{
    my ($root, $file, $line, $target) = @_;
    return if isGenerated($root, $file, $target);
    if ($target =~ m{(?:^|/)\.\.?/}) {
        return finding($file, $line, "\"$target\": write the path from src/, without dots");
    }
    if (!isProjectFile("$root/src/$target")) {
        my ($top) = $file =~ m{^(\w+)/};    # benchmarks and the like have headers of their own
        my @others = $top eq 'src' ? () : ('tests', $top);
        return if grep { isProjectFile("$root/$_/$target") } @others;
        return finding($file, $line, "\"$target\" names no file below src/");
    }
    return if $file !~ m{^src/(.*)};
    my $layer = layerOf($1);
    my $targetLayer = layerOf($target);
    return if !defined $layer || (defined $targetLayer && $layer eq $targetLayer);
    if (!defined $targetLayer || !grep { $_ eq $targetLayer } @{$below{$layer}}) {
        finding($file, $line, "\"$target\" lies above or beside this file's layer ($layer)");
    }
    return;
}

sub checkLibraryInclude
{
    my ($root, $file, $line, $target) = @_;
    if (isProjectFile("$root/src/$target")) {
        return finding($file, $line, "<$target> is a file of ours: include it in quotes");
    }
    my $layer = $file =~ m{^src/(.*)} ? layerOf($1) : undef;
    my $isQml = $target =~ m{^(?:Qt(?:Qml|Quick)|Q(?:Qml|Quick|JS)|qqml)};
    if ($isQml && defined $layer && $freeOfQml{$layer}) {
        finding($file, $line, "<$target>: this layer ($layer) knows nothing of QML");
    }
    return;
}

my $root = sourceRoot();
for my $file (cppFilesOf($root)) {
    if ($file =~ m{^src/(.*)} && !defined layerOf($1)) {
        finding($file, 1, 'lies in no known layer');
    }
    my $number = 0;
    for my $text (split /\n/, withoutComments(readText("$root/$file"))) {
        ++$number;
        next if $text !~ /^\s*#\s*include\b\s*(?:"([^"]*)"|<([^>]*)>)?/;
        if (defined $1) {
            checkProjectInclude($root, $file, $number, $1);
        } elsif (defined $2) {
            checkLibraryInclude($root, $file, $number, $2);
        } else {
            finding($file, $number, 'includes what a macro names: write the path itself');
        }
    }
}
finish();
