// Rules compiled for matching: the data of a Matcher.
//
// Not installed. Tested by tests/matcher/matcher-test.cpp.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <Eigen/Core>

#include <velmora/matcher.hpp>

#include "rule-index.hpp"
#include "sentence-views.hpp"

namespace velmora::detail {

/// Sentences are counted through all rules, in the order of the rules: n sentences, D dimensions.
/// A rule is named by its place among the rules.
struct MatcherData {
  MatcherData(Model of, std::vector<Rule> given, const ScoreOptions& how, const Progress& progress);

  Model model;
  std::vector<Rule> rules;
  ScoreOptions options;
  /// Ids and places of the rules by ascending id.
  std::vector<std::pair<int, std::size_t>> by_id;
  /// The first sentence of each rule, and n at the end.
  std::vector<std::size_t> first_sentence;
  /// Rule of each sentence.
  std::vector<std::size_t> rule_of;
  std::vector<SentenceText> texts;

  Views views;
  SentenceTable sentences;

  /// By rule: what scales the sum of its vectors to length 1, in each view; 0 for a sum of zeros.
  std::vector<double> latent_scale, word_scale, character_scale;

  /// (F'F + 0.5 I)^-1, D x D: the ridge regression turns a sum of latent vectors into its column.
  Eigen::MatrixXd ridge;
  /// n x rules: the columns of the kernel ridge regression; no rows when it is left out.
  Eigen::MatrixXd kernel;
  /// Its weight in a score.
  double kernel_weight = 0.0;
  /// The weights of the counting parts.
  double word_weight = 0.0;
  double character_weight = 0.0;
  /// D x rules: all that is linear in the latent vector of a query, weighted.
  Eigen::MatrixXd linear;
  /// The lengths of its columns.
  std::vector<double> linear_length;
  /// Sum of the weights that are in use.
  double total_weight = 1.0;
  /// Of all rules.
  std::optional<RuleIndex> index;

  std::size_t sentence_count() const { return rule_of.size(); }
  bool uses_kernel() const { return kernel.rows() != 0; }
  /// Place of the rule with an id, or the number of rules.
  std::size_t place_of(int id) const;

 private:
  void see_sentences(const Progress& progress);
  void weigh();
  void solve();
};

struct ActiveData {
  /// Kept alive, so that no other matcher can take its place.
  std::shared_ptr<const MatcherData> owner;
  RuleIndex index;
};

/// Shares of the views in the similarity of two sentences that the kernel regression works on.
inline constexpr double kKernelLatent = 0.4;
inline constexpr double kKernelWords = 0.3;
inline constexpr double kKernelCharacters = 0.3;

}  // namespace velmora::detail
