// Shows what was measured, as a table for a reader or as JSON for a program.
//
// Tested by tools/evaluate/tests/evaluate-test.cpp.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "evaluation.hpp"

struct Report {
  std::string language;
  std::string model_directory;
  /// One for each contender, in the order of the results.
  std::vector<std::string> contenders;

  std::vector<IntentResult> intents;
  std::size_t label_count = 0;
  std::size_t rule_count = 0;
  /// Rules without a word that the model knows, which were left out.
  std::size_t unknown_rule_count = 0;
  /// Test sentences that share hardly a word with their label's training sentences.
  std::size_t low_overlap_count = 0;
  bool has_out_of_scope = false;

  /// One for each of the contenders that compare sentences, which come first.
  std::vector<PairResult> pairs;
  std::size_t pair_count = 0;
};

void print_report(std::ostream& out, const Report& report);
void print_report_json(std::ostream& out, const Report& report);
