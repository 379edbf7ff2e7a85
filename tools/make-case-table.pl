#!/usr/bin/perl
# Writes platform/CaseTable.cpp: the simple upper- and lower-case mappings of the Unicode data that this
# Perl carries, packed into runs. Run it from the root of the project, then clang-format the result.
use strict;
use warnings;
use Unicode::UCD qw(prop_invmap);

sub mapping {
    my ($starts, $values) = prop_invmap($_[0]);
    my %map;
    for my $i (0 .. $#$starts - 1) {
        next unless $values->[$i];    # 0 stands for "itself"
        for my $c ($starts->[$i] .. $starts->[$i + 1] - 1) {
            my $to = $values->[$i] + $c - $starts->[$i];
            $map{$c} = $to if $to != $c;
        }
    }
    return \%map;
}

sub runs {
    my $map = shift;
    my @runs;
    for my $c (sort { $a <=> $b } keys %$map) {
        my $delta = $map->{$c} - $c;
        my $run = $runs[-1];
        if ($run && $run->[3] == $delta) {
            my $gap = $c - $run->[1];
            if ($gap == $run->[2] || ($run->[0] == $run->[1] && $gap <= 2)) {
                @$run[1, 2] = ($c, $gap);
                next;
            }
        }
        push @runs, [$c, $c, 1, $delta];
    }
    return @runs;
}

sub table {
    my ($name, $property) = @_;
    my @runs = runs(mapping($property));
    my $text = "extern const CaseRun $name" . "[] = {\n";
    $text .= sprintf("{0x%04X, 0x%04X, %d, %d},\n", @$_) for @runs;
    return $text . "};\nextern const std::size_t $name" . "Count = std::size($name);\n\n";
}

open(my $out, '>', 'platform/CaseTable.cpp') or die "platform/CaseTable.cpp: $!";
print $out "// Written by tools/make-case-table.pl from Unicode ", Unicode::UCD::UnicodeVersion(), ".\n";
print $out "#include \"CaseTable.h\"\n\n#include <iterator>\n\nnamespace platform {\n\n";
print $out table('kUpperRuns', 'Simple_Uppercase_Mapping');
print $out table('kLowerRuns', 'Simple_Lowercase_Mapping');
print $out "} // namespace platform\n";
