// The figures by which a matcher is judged. Plain arithmetic on results, without a matcher.
//
// Used by velmora-evaluate; tested by tools/evaluate/tests/evaluate-test.cpp.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

/// How one test sentence fared.
struct Outcome {
  /// Place of the right label among all labels, from 1; 0 when the matcher does not rank it.
  int rank = 0;
  std::string sentence;
  std::string wanted;
  /// Shares hardly a word with the training sentences of the right label.
  bool low_overlap = false;
  /// The label in first place.
  std::string best;
  double best_score = 0.0;
};

struct RankingFigures {
  double top1 = 0.0;
  double top3 = 0.0;
  /// Mean of 1 / rank, 0 for a label that is not ranked.
  double mean_reciprocal_rank = 0.0;
};

/// Zeros for no outcome.
RankingFigures ranking_figures(const std::vector<Outcome>& outcomes);

struct Confusion {
  std::string wanted;
  std::string got;
  int count = 0;
};

/// Pairs of labels that were mistaken, the most frequent first, at most `limit` of them.
std::vector<Confusion> worst_confusions(const std::vector<Outcome>& outcomes, std::size_t limit);

/// The score that separates right first answers best from everything else that is answered.
struct BestThreshold {
  double score = 0.0;
  /// Share of the right first answers at or above it.
  double keeps = 1.0;
  /// Share of the others at or above it.
  double lets_through = 0.0;
};

/// The score of `right` at which the most of `right` lie at or above it and of `other` below it; of
/// equally good ones the lowest.
BestThreshold best_threshold(std::vector<double> right, std::vector<double> other);

/// Probability that a score of `positive` is above one of `negative`, a tie counting half: the area
/// under the ROC curve. 0.5 when one of the two is empty.
double area_under_roc(const std::vector<double>& positive, const std::vector<double>& negative);

/// Pearson's correlation of two lists of equal length; 0 when one of them does not vary.
double pearson(const std::vector<double>& first, const std::vector<double>& second);

/// Pearson's correlation of the ranks; equal values share the mean of their ranks.
double spearman(const std::vector<double>& first, const std::vector<double>& second);
