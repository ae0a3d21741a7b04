// The entries of one sentence that have a place in a term matrix.
//
// Used where weights enter a matrix and by the fold-in, which needs none, so that both keep and
// report the same words. Not installed. Tested by tests/text/text-tables-test.cpp.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "../support/tables.hpp"

namespace VX::Dialog::detail {

/// Word ids and weights of a sentence, ascending. An id below 0 or from `vocabulary_size` on has no
/// row: it is left out. Logged at level error, but of several ids below 0 only the first.
std::vector<std::pair<int, double>> matrix_terms(const SentenceWeights& weights,
                                                 long vocabulary_size);

}  // namespace VX::Dialog::detail
