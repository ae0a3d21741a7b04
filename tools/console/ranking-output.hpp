// Shows the ranked rules of a sentence, as lines for a reader or as JSON for a program.
//
// Tested by tools/console/tests/console-test.cpp.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

struct RankedRule {
  double score = 0.0;
  /// Id of a rule or name of an application.
  std::string id;
  /// The first sentence of the rule or application.
  std::string sentence;
};

struct Ranking {
  std::string sentence;
  /// False when the model knows no word of the sentence: the scores then say nothing.
  bool known = true;
  /// Best first.
  std::vector<RankedRule> rules;
};

/// Prints one line a rule: score, bar, id, first sentence.
///
/// echo    print the sentence above, for a reader who did not type it
/// colour  use the colours of a terminal
void print_ranking(std::ostream& out, const Ranking& ranking, bool echo, bool colour);

/// Prints one JSON object and a newline. Bytes that are not UTF-8 become replacement characters.
void print_ranking_json(std::ostream& out, const Ranking& ranking);
