// The scores of rules for one sentence.
//
// Used by matching and by explain. The latent part of a score takes the dot products of the query
// with the vectors of the rule's sentences and with the linear part of the rule. The coarse rows of
// the index bound them for every rule, and only rules that may be among the best are scored
// exactly. All other parts are exact for every rule. Not installed. Tested by
// tests/matcher/matcher-test.cpp.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "compilation.hpp"

namespace velmora::detail {

/// A sentence in the views of a matcher.
struct Query {
  SentenceText text;
  /// Stems that neither model nor rules know.
  std::vector<std::string> unknown;
  /// Share (0 to 1) of the squared weights of the stems that are not in the dictionary.
  double unknown_share;
  Eigen::VectorXd latent;
  SparseVector words;
  SparseVector characters;
};

Query make_query(const MatcherData& matcher, std::string_view sentence);

/// The index that `active` holds, or that of all rules for null. Throws Error when `active` belongs
/// to another matcher.
const RuleIndex& active_index(const std::shared_ptr<const MatcherData>& matcher,
                              const ActiveRules* active);

/// A rule of an index, counted from 0, and its score.
struct RuleScore {
  std::size_t rule;
  double score;
};

/// The sentences of a rule that came closest in each view, and together; numbered among all
/// sentences of the matcher. Of equals the first.
struct Nearest {
  std::size_t latent, words, characters;
  std::size_t together;
};

/// Refers to its arguments.
class Scores {
 public:
  Scores(const MatcherData& matcher, const RuleIndex& index, const Query& query);

  /// The `count` best rules, best first, ties by ascending id; fewer when there are fewer.
  std::vector<RuleScore> best(std::size_t count) const;
  /// Score of a rule of the index.
  double score(std::size_t rule) const;
  Nearest nearest(std::size_t rule) const;
  /// How far the counting parts count: g, from 0 to 1.
  double counting() const { return counting_; }

 private:
  // The sentences of a rule, counted within the index.
  struct Range {
    std::size_t first, last;
  };
  struct Bounds {
    double lower, upper;
  };

  Range sentences_of(std::size_t rule) const;
  double latent_dot(std::size_t sentence) const;
  std::vector<Bounds> bounds() const;
  void add_counting_parts();
  void add_kernel();
  double scaled(double sum) const { return sum / matcher_.total_weight; }

  const MatcherData& matcher_;
  const RuleIndex& index_;
  const Query& query_;
  // By sentence of the index: dot products with the query.
  std::vector<double> words_, characters_;
  double counting_ = 1.0;
  // By rule of the index: the part of the score that is not latent, not scaled.
  std::vector<double> others_;
};

}  // namespace velmora::detail
