// Runs a contender over test data.
//
// Used by velmora-evaluate; tested by tools/evaluate/tests/evaluate-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "contenders.hpp"
#include "measures.hpp"

/// Sentences by label.
using Intents = std::map<std::string, std::vector<std::string>>;

/// Makes rules of training sentences, `sentences_per_rule` of a label each, or all of them for 0.
RuleSet make_rules(const Intents& training, int sentences_per_rule);

struct TestSentence {
  std::string label;
  std::string sentence;
  /// See Outcome.
  bool low_overlap = false;
};

struct IntentResult {
  std::vector<Outcome> outcomes;
  RankingFigures figures;
  /// Of the sentences with low overlap alone.
  RankingFigures low_overlap_figures;
  /// Best score of each sentence that belongs to no label.
  std::vector<double> out_of_scope_scores;
  double area_under_roc = 0.0;
  /// Right first answers against wrong ones and against the sentences that belong to no label.
  BestThreshold threshold;
  double milliseconds_per_sentence = 0.0;
};

IntentResult evaluate_intents(const Contender& contender, const std::vector<TestSentence>& tests,
                              const std::vector<std::string>& out_of_scope);

struct ScoredPair {
  double score = 0.0;
  std::string first;
  std::string second;
};

struct PairResult {
  double pearson = 0.0;
  double spearman = 0.0;
};

PairResult evaluate_pairs(const Contender& contender, const std::vector<ScoredPair>& pairs);
