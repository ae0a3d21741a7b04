// Why a rule has its score. Tested by tests/matcher/matcher-test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <velmora/export.hpp>

namespace velmora {

/// What two words add to a score: one of the sentence, one of the rule. Words are stems.
struct WordPair {
  std::string query_word;  ///< a stem of the sentence that was matched
  /// Empty for what the sentences of the other rules add or take away: the kernel ridge regression
  /// sets each rule against them.
  std::string rule_word;
  double latent = 0.0;      ///< by closeness of meaning
  double words = 0.0;       ///< by being the same stem
  double characters = 0.0;  ///< by being spelled alike

  /// The sum of the three.
  double total() const noexcept { return latent + words + characters; }
};

/// A score as a sum over pairs of words. Nothing is left out and nothing estimated: the totals of
/// all pairs add up to the score, up to rounding (below 1e-12).
struct Explanation {
  int id = 0;          ///< of the rule
  double score = 0.0;  ///< as Match::score
  /// As Match::sentence.
  std::size_t sentence = 0;
  /// Every pair that adds anything, strongest (by the absolute value of the total) first.
  std::vector<WordPair> pairs;
  /// Stems of the sentence that neither the model nor the rules know: they add nothing.
  std::vector<std::string> unknown;
};

}  // namespace velmora
