// Measures on words: similarity of two lists, specificity, and the table of all pairs.
//
// Used by VelmoraPrivate. Not installed. Tested by tests/engine/matching-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "engine-state.hpp"

namespace VX::Dialog::detail {

/// Cosine of the latent vectors of two lists of stems, taken as they come.
double list_similarity(EngineState& engine, std::vector<std::string> first,
                       std::vector<std::string> second);

/// Idf to stem for the known stems of a sentence; the sentence itself under 1.0 when there is none.
std::map<double, std::string> specificities(const EngineState& engine, const Reporting& reporting,
                                            const std::string& sentence);

/// Fills fWordDists with the cosines of all pairs of words and prints them.
void load_word_distances(EngineState& engine);

}  // namespace VX::Dialog::detail
