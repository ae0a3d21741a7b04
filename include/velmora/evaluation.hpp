// How well a set of rules answers sentences whose answers are known.
// Tested by tests/matcher/evaluation-test.cpp.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <velmora/export.hpp>
#include <velmora/matcher.hpp>

namespace velmora {

/// A sentence and the rule that should answer it.
struct Expectation {
  /// Empty: no rule should answer.
  std::optional<int> id = std::nullopt;
  std::string sentence;  ///< UTF-8, as Matcher::match takes it
  /// Line in the file it was read from, counted from 1; 0 for one that came from no file.
  std::size_t line = 0;
};

/// Reads an expectations file: "id<TAB>sentence" or "-<TAB>sentence" on each line, otherwise as
/// read_rules reads. Throws Error as it does.
VELMORA_EXPORT std::vector<Expectation> read_expectations(const std::filesystem::path& path);

/// A sentence that another rule than the expected one answers, or a sentence for no rule that
/// scores at or above the best threshold.
struct Failure {
  /// Index into the expectations.
  std::size_t expectation = 0;
  /// Rank of the expected rule, counted from 1; of rules with equal scores the expected one counts
  /// as the last. 0 when no rule should answer.
  std::size_t rank = 0;
  /// Score of the expected rule; 0 when no rule should answer.
  double wanted_score = 0.0;
  /// What came first instead.
  Match got;
};

/// Two rules and how often sentences for the first were answered by the second.
struct Confusion {
  int wanted = 0;         ///< id of the rule that should have answered
  int got = 0;            ///< id of the rule that did
  std::size_t count = 0;  ///< how many sentences
};

/// The score that separates right answers best from all others: at or above it are as many right
/// answers, and below it as many wrong ones and sentences for no rule, as any single score allows.
struct BestThreshold {
  double score = 0.0;  ///< for MatchOptions::threshold
  /// Share (0 to 1) of the right first answers that reach it; 1 when there are none.
  double keeps = 1.0;
  /// Share of the wrong first answers and of the sentences for no rule that reach it; 0 when there
  /// are none.
  double lets_through = 0.0;
};

/// What evaluate() found out. A tie counts against the expected rule.
struct Evaluation {
  std::size_t in_scope = 0;      ///< number of expectations with a rule
  std::size_t out_of_scope = 0;  ///< number of those without one
  /// Share (0 to 1) of the expectations with a rule for which it came first; 0 when there are none.
  double first = 0.0;
  double among_three = 0.0;           ///< the same for the first three places
  double mean_reciprocal_rank = 0.0;  ///< mean of 1 / rank of the expected rule
  /// Area under the ROC curve of the best score, sentences with a rule against those without: the
  /// chance that one of the former scores above one of the latter. Empty when one kind is missing.
  std::optional<double> area_under_roc = std::nullopt;
  BestThreshold threshold;  ///< the score that separates best
  /// In the order of the expectations.
  std::vector<Failure> failures;
  /// Most frequent first, then by the ids.
  std::vector<Confusion> confusions;
};

/// Matches every expectation against all rules. Throws Error when an id is not among the rules.
///
/// threads   as for Matcher::match
VELMORA_EXPORT Evaluation evaluate(const Matcher& matcher,
                                   const std::vector<Expectation>& expectations,
                                   unsigned threads = 1);

}  // namespace velmora
