// Shows why a rule got its score: a table of pairs of words. Tested by
// tools/velmora/tests/commands-test.cpp.
#pragma once

#include <iosfwd>

#include <velmora/matcher.hpp>

/// Prints the strongest pairs, at most `shown` of them, the sum of the rest, and the total.
void print_explanation(std::ostream& out, const velmora::Matcher& matcher,
                       const velmora::Explanation& explanation, std::size_t shown = 12);
