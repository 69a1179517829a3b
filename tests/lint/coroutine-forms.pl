#!/usr/bin/perl
# SPDX-FileCopyrightText: 2026 The Dugwise authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Finds forms of co_await that g++ 12 compiles wrongly, and coroutines whose inputs can die early.
# Both compile without a word and crash, or answer wrongly, only at run time.
#
# It reads tokens, not the language: a file is cut into statements at ; and at the braces of blocks;
# a lambda's body is read by itself and leaves one token, 'BODY', in the statement that holds it.
use strict;
use warnings;

use File::Basename qw(dirname);
use lib dirname(__FILE__);
use LintFiles;

my %closing = ('(' => ')', '[' => ']', '{' => '}');
my %isControl = map { $_ => 1 } qw(if while for switch catch);
my %isType = map { $_ => 1 } qw(class struct union enum namespace extern);
my %isView = map { $_ => 1 } qw(QStringView QAnyStringView QUtf8StringView QLatin1StringView
    QByteArrayView string_view u16string_view span);
# Words that may stand before a ( without being called.
my %isOperator = map { $_ => 1 } qw(co_return co_await co_yield not sizeof);
# What may stand between a parameter list and the body.
my %isSpecifier = map { $_ => 1 } qw(const constexpr mutable noexcept override final & &&);

my $file;      # the file being read
my @tokens;    # its tokens: [text, line]

# --- tokens -----------------------------------------------------------------------------------

sub tokensOf
{
    my ($code) = @_;
    my $newlines = sub { my ($gone) = @_; return "\n" x ($gone =~ tr/\n//); };
    $code =~ s{^([ \t]*#(?:[^\n\\]|\\.)*)}{
        my ($directive, $before) = ($1, substr($code, 0, $-[0]));
        if ($directive =~ /\bco_await\b/) {
            my $line = 1 + ($before =~ tr/\n//);
            finding($file, $line, 'co_await in a macro cannot be judged: write it out');
        }
        $newlines->($directive)
    }gsme;
    $code =~ s{\[\[[^\[\]]*\]\]}{$newlines->($&)}ge;
    my @found;
    my $line = 1;
    while ($code =~ /\G(?:(\n)|[^\S\n]+|(\w+|""|->|::|&&|\|\||\.\.\.|<=>|[<>=!]=|.))/gc) {
        ++$line if defined $1;
        push @found, [$2, $line] if defined $2;
    }
    return @found;
}

sub text
{
    my ($statement, $index) = @_;
    return $index >= 0 && $index < @$statement ? $statement->[$index][0] : '';
}

# Index of the bracket that pairs with the one at $index, looking in the direction of $step; -1 when
# there is none. $open and $close are as met in that direction.
sub partner
{
    my ($statement, $index, $step, $open, $close) = @_;
    my $depth = 0;
    for (my $i = $index; $i >= 0 && $i < @$statement; $i += $step) {
        my $token = $statement->[$i][0];
        ++$depth if $token eq $open;
        --$depth if $token eq $close;
        return $i if $depth == 0;
    }
    return -1;
}

# --- what a bracket means ---------------------------------------------------------------------

# Whether the [ at $index begins a lambda, not a subscript, an array or a structured binding.
sub beginsLambda
{
    my ($statement, $index) = @_;
    my ($before, $second) = (text($statement, $index - 1), text($statement, $index - 2));
    $before = $second if $before =~ /^&&?$/ && $second eq 'auto';
    return 1 if $before =~ /^(?:return|co_return|co_await|co_yield|case|throw|else|do|and|or|not)$/;
    return $before !~ /^(?:\w+|""|\)|\])$/;
}

# Index of the [ whose lambda gets its body after the last token; -1 when the brace that follows is
# not a lambda's.
sub lambdaBefore
{
    my ($statement) = @_;
    my $i = $#$statement;
    my $arrow = trailingArrow($statement);
    $i = $arrow - 1 if $arrow >= 0;
    --$i while $isSpecifier{text($statement, $i)};
    $i = partner($statement, $i, -1, ')', '(') - 1 if text($statement, $i) eq ')';
    $i = partner($statement, $i, -1, '>', '<') - 1 if text($statement, $i) eq '>';
    return -1 if text($statement, $i) ne ']';
    my $start = partner($statement, $i, -1, ']', '[');
    return $start >= 0 && beginsLambda($statement, $start) ? $start : -1;
}

# Index of the -> whose type ends the statement; -1 without one.
sub trailingArrow
{
    my ($statement) = @_;
    my $depth = 0;
    for (my $i = $#$statement; $i >= 0; --$i) {
        my $token = $statement->[$i][0];
        return $i if $token eq '->' && $depth == 0;
        ++$depth if $token eq '>';
        --$depth if $token eq '<';
        return -1 if $depth == 0 && $token !~ /^(?:\w+|::|<|\*|&|&&|\.\.\.)$/;
    }
    return -1;
}

# Whether the braces at token $at hold statements: a ; stands directly in them.
sub holdsStatements
{
    my ($at) = @_;
    my $depth = 0;
    for (my $i = $at; $i < @tokens; ++$i) {
        my $token = $tokens[$i][0];
        ++$depth if $closing{$token};
        --$depth if $token =~ /^[)\]}]$/;
        return 0 if $depth == 0;
        return 1 if $depth == 1 && $token eq ';';
    }
    return 0;
}

# What the { at token $at is, after the tokens of $statement: 'lambda', 'block' or 'list'.
sub kindOfBrace
{
    my ($statement, $open, $at) = @_;
    return 'lambda' if lambdaBefore($statement) >= 0;
    return holdsStatements($at) ? 'block' : 'list' if @$open;
    my $before = text($statement, $#$statement);
    return 'block' if $before =~ /^(?:|[)}:]|else|do|try)$/ || $isSpecifier{$before};
    return 'block' if declaresType($statement) || trailingArrow($statement) >= 0;
    return holdsStatements($at) ? 'block' : 'list';
}

# Whether the statement is the head of a class, an enum, a namespace or the like.
sub declaresType
{
    my ($statement) = @_;
    my $depth = 0;
    for my $token (map { $_->[0] } @$statement) {
        ++$depth if $token =~ /^[<(\[{]$/;
        --$depth if $token =~ /^[>)\]}]$/;
        return 1 if $depth == 0 && $isType{$token};
    }
    return 0;
}

# Whether the ( at $index begins the arguments of a call or a macro.
sub beginsCall
{
    my ($statement, $index) = @_;
    my $i = $index - 1;
    $i = partner($statement, $i, -1, '>', '<') - 1 if text($statement, $i) eq '>';
    my $before = text($statement, $i);
    my $qualifier = text($statement, $i - 2) . text($statement, $i - 1);
    return 0 if $before =~ /^(?:static|const|dynamic)_cast$/;
    return 0 if $before eq 'move' && $qualifier eq 'std::';
    return $before =~ /^(?:\w+|""|\)|\]|\})$/ && !$isOperator{$before};
}

# --- judging one statement --------------------------------------------------------------------

# Line of the first co_await of the tokens, 0 without one.
sub awaitLine
{
    my (@part) = @_;
    for my $token (@part) {
        return $token->[1] if $token->[0] eq 'co_await';
    }
    return 0;
}

# Cuts off labels, else, do and the heads of if, for and the like, judging those heads; gives what
# is left.
sub withoutHeads
{
    my ($statement) = @_;
    my @rest = @$statement;
    while (@rest) {
        my $first = $rest[0][0];
        if ($first =~ /^(?:else|do|try)$/ || (@rest > 1 && $rest[1][0] eq ':')) {
            splice @rest, 0, $first =~ /^(?:else|do|try)$/ ? 1 : 2;
        } elsif ($first eq 'case') {
            my $colon = 0;
            ++$colon while $colon < $#rest && $rest[$colon][0] ne ':';
            splice @rest, 0, $colon + 1;
        } elsif ($isControl{$first}) {
            my $begin = text(\@rest, 1) eq '(' ? 1 : 2;
            my $end = partner(\@rest, $begin, 1, '(', ')');
            last if $end < 0;
            my $line = awaitLine(splice @rest, 0, $end + 1);
            finding($file, $line, "co_await in the condition of $first: name its result") if $line;
        } else {
            last;
        }
    }
    return \@rest;
}

sub judgeAwait
{
    my ($statement) = @_;
    my $line = awaitLine(@$statement) or return;
    my ($awaits, $calls) = (0, 0);
    my @open;
    my %wrong;
    for my $i (0 .. $#$statement) {
        my $token = $statement->[$i][0];
        if ($token eq '(') {
            push @open, beginsCall($statement, $i) ? 'call' : 'other';
            ++$calls if $open[-1] eq 'call';
        } elsif ($token eq ')') {
            pop @open;
        } elsif ($token eq 'co_await') {
            ++$awaits;
            $wrong{'in the arguments of a call'} = 1 if grep { $_ eq 'call' } @open;
        } elsif ($token eq '?') {
            $wrong{'beside a conditional'} = 1;
        } elsif ($token =~ /^(?:&&|\|\||and|or)$/) {
            $wrong{'beside a logical operator'} = 1 if text($statement, $i - 1) ne 'auto';
        } elsif ($token eq '{') {
            $wrong{'beside a braced list'} = 1;
        } elsif ($token eq '[' && beginsLambda($statement, $i) && text($statement, $i + 1) ne ']') {
            $wrong{'beside a capturing lambda'} = 1;
        }
    }
    $wrong{'beside another co_await'} = 1 if $awaits > 1;
    $wrong{'beside more than one call'} = 1 if $calls > 1;
    for my $reason (sort keys %wrong) {
        finding($file, $line, "co_await $reason: name the parts in statements before");
    }
    return;
}

# An invokable that gives a Task: QML can neither await nor destroy it.
sub judgeInvokable
{
    my ($statement) = @_;
    my $begin = 0;
    ++$begin while $begin < @$statement && $statement->[$begin][0] ne 'Q_INVOKABLE';
    my $arrow = trailingArrow($statement);
    for my $i ($begin .. $#$statement) {
        last if $statement->[$i][0] eq '(' && $arrow < 0;
        if ($statement->[$i][0] eq 'Task' && text($statement, $i + 1) eq '<') {
            finding($file, $statement->[$i][1],
                'Q_INVOKABLE gives a Task: make it void, starting a private coroutine');
            return;
        }
    }
    return;
}

sub judge
{
    my ($statement) = @_;
    my $rest = withoutHeads($statement);
    judgeAwait($rest);
    judgeInvokable($rest);
    return;
}

# --- judging one coroutine --------------------------------------------------------------------

# The parameters between the brackets at $begin and $end: none may refer to what the caller owns.
sub judgeParameters
{
    my ($statement, $begin, $end) = @_;
    my ($depth, $inDefault) = (0, 0);
    for my $i ($begin + 1 .. $end - 1) {
        my ($token, $line) = @{$statement->[$i]};
        ++$depth if $token =~ /^[<(\[{]$/;
        --$depth if $token =~ /^[>)\]}]$/;
        next if $depth != 0;
        $inDefault = 0 if $token eq ',';
        $inDefault = 1 if $token eq '=';
        next if $inDefault;
        if ($token =~ /^&&?$/) {
            finding($file, $line, 'parameter of a coroutine by reference: take it by value');
        } elsif ($isView{$token}) {
            finding($file, $line, "parameter of a coroutine is a view ($token): take a value");
        }
    }
    return;
}

# $head is what stands before a block: of a function, if, for, class or the like.
sub judgeFunction
{
    my ($head, $isCoroutine) = @_;
    judge($head);
    return if !$isCoroutine || declaresType($head);
    my @head = @{withoutHeads($head)};
    my $arrow = trailingArrow(\@head);
    splice @head, $arrow if $arrow >= 0;
    for (my $i = $#head; $i >= 0; --$i) {
        next if $head[$i][0] ne ')';
        my $begin = partner(\@head, $i, -1, ')', '(');
        return if $begin < 0;
        if (text(\@head, $begin - 1) !~ /^(?:noexcept|requires)$/) {
            return judgeParameters(\@head, $begin, $i);
        }
        $i = $begin;
    }
    return;
}

# The lambda whose body follows the statement is a coroutine.
sub judgeCoroutineLambda
{
    my ($statement) = @_;
    my $begin = lambdaBefore($statement);
    my $end = partner($statement, $begin, 1, '[', ']');
    if ($end > $begin + 1) {
        finding($file, $statement->[$begin][1],
            'captures of a lambda that is a coroutine die with it: pass them as parameters');
    }
    my $i = $end + 1;
    $i = partner($statement, $i, 1, '<', '>') + 1 if text($statement, $i) eq '<';
    if (text($statement, $i) eq '(') {
        judgeParameters($statement, $i, partner($statement, $i, 1, '(', ')'));
    }
    return;
}

# --- reading ----------------------------------------------------------------------------------

# Notes that the brackets of a file do not pair up at token $at, and drops the rest of the file.
sub giveUp
{
    my ($at) = @_;
    my ($token, $line) = $at < @tokens ? @{$tokens[$at]} : ('its end', $tokens[-1][1]);
    finding($file, $line, "brackets do not pair up at $token: this check cannot read the file");
    @tokens = ();
    return;
}

# Reads and judges statements from token $at to the } of their block, or of the $whole file. Gives
# the index where they end, and whether they make the function around them a coroutine.
sub readBlock
{
    my ($at, $whole) = @_;
    my $isCoroutine = 0;
    my @statement;
    my @open;    # the brackets that the statement has still to close
    for (; $at < @tokens; ++$at) {
        my $token = $tokens[$at][0];
        my $line = $tokens[$at][1];
        my $kind = $token eq '{' ? kindOfBrace(\@statement, \@open, $at) : '';
        if ($kind eq 'lambda' || $kind eq 'block') {
            my ($end, $bodyIsCoroutine) = readBlock($at + 1, 0);
            if ($kind eq 'lambda') {
                judgeCoroutineLambda(\@statement) if $bodyIsCoroutine;
            } elsif (!@open) {
                judgeFunction(\@statement, $bodyIsCoroutine);
                $isCoroutine = 1 if $bodyIsCoroutine && !declaresType(\@statement);
                @statement = ();
            }
            push @statement, ['BODY', $line] if $kind eq 'lambda' || @open;
            $at = $end;
        } elsif ($token =~ /^[;}]$/ && !@open) {
            last if $token eq '}';
            judge(\@statement);
            @statement = ();
        } else {
            $isCoroutine = 1 if $token =~ /^co_(?:await|return|yield)$/;
            push @statement, $tokens[$at];
            push @open, $closing{$token} if $closing{$token};
            giveUp($at) if $token =~ /^[)\]}]$/ && (!@open || pop @open ne $token);
        }
    }
    giveUp($at) if @tokens && ($at < @tokens ? $whole : !$whole || @open);
    judge(\@statement);
    return ($at, $isCoroutine);
}

my $root = sourceRoot();
for my $path (cppFilesOf($root)) {
    $file = $path;
    my $code = withoutStrings(readText("$root/$path"));
    next if $code !~ /\bco_(?:await|return|yield)\b|\bQ_INVOKABLE\b/;
    @tokens = tokensOf($code);
    readBlock(0, 1);
}
finish();
