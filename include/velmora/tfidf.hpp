// From word ids to weights.
//
// Keeps no state; calls may overlap on different data. Messages go to the log category
// "LibVelmora.Query". Tested by tests/text/text-tables-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/export.hpp>

namespace VX::Dialog {

/// Weights words: count of the word in its sentence times idf.
///
/// word_ids   sentence id to word ids
/// idf        word id to idf; a word without one keeps its count, which is logged at level info
/// weights    out: sentence id to word id to weight; entries of other ids stay
VELMORA_EXPORT void tfidf(const std::map<int, std::vector<int>>& word_ids,
                          const std::map<int, double>& idf,
                          std::map<int, std::map<int, double>>& weights);

}  // namespace VX::Dialog
