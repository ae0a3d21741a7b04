// Shows the ranked rules of a sentence, as lines for a reader or as JSON for a program.
//
// Tested by tools/velmora/tests/commands-test.cpp.
#pragma once

#include <iosfwd>
#include <string>
#include <variant>
#include <vector>

#include "terminal.hpp"

struct RankedRule {
  double score = 0.0;
  /// Id of a rule, or name of an application.
  std::variant<int, std::string> id;
  /// The sentence of the rule that is shown.
  std::string sentence;
};

struct Ranking {
  std::string sentence;
  /// What neither the model nor the rules know of it.
  std::vector<std::string> unknown;
  /// Best first.
  std::vector<RankedRule> rules;
};

/// Prints one line a rule: score, bar, id, sentence; then the unknown words.
///
/// echo   print the sentence above, for a reader who did not type it
void print_ranking(std::ostream& out, const Ranking& ranking, bool echo, const Paint& paint);

/// Prints one JSON object and a newline.
void print_ranking_json(std::ostream& out, const Ranking& ranking);
