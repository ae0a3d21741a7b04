// From sentences to stem sets, the identity of a rule from run to run.
//
// Used by compilation, matching and the warm start. Not installed. Tested by
// tests/engine/matching-test.cpp and tests/engine/warm-start-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "../support/tables.hpp"

namespace VX::Dialog {
class Stemmer;
}

namespace VX::Dialog::detail {

/// Stems, sorted and without repeats.
using StemSet = std::vector<std::string>;

/// The stems of one sentence: trimmed, without empty ones. The vocabulary plays no part.
StemSet stem_set(Stemmer& stemmer, const std::string& sentence);

/// The stems of all sentences of a rule together, as far as they are words of the vocabulary.
StemSet known_stem_set(Stemmer& stemmer, const std::vector<std::string>& sentences,
                       const Vocabulary& vocabulary);

}  // namespace VX::Dialog::detail
