// The scores of the rules for one sentence.
//
// Used by matching and by explain. Not installed. Tested by tests/matcher/matcher-test.cpp.
#pragma once

#include <string>
#include <vector>

#include "compilation.hpp"

namespace velmora::detail {

/// A sentence in the views of a matcher.
struct Query {
  std::vector<std::string> stems;
  /// Of them, what neither model nor rules know.
  std::vector<std::string> unknown;
  Eigen::VectorXd latent;
  SparseVector words;
  SparseVector characters;
};

/// Places of the active rules, all for null, by ascending id. Throws Error when `active` belongs to
/// another matcher.
std::vector<std::size_t> active_places(const std::shared_ptr<const MatcherData>& matcher,
                                       const ActiveRules* active);

Query make_query(const MatcherData& matcher, std::string_view sentence);

/// The sentences of the rules that came closest in each view, and together.
struct Nearest {
  std::size_t latent, words, characters;
  std::size_t together;
};

/// Scores of the active rules for a query.
class Scores {
 public:
  /// places   of the active rules, by ascending id
  Scores(const MatcherData& matcher, const Query& query,
         const std::vector<std::size_t>& places);

  /// Score of each of the places.
  const std::vector<double>& values() const { return values_; }
  /// The part of the counting parts that counts, g.
  double counting() const { return counting_; }
  /// For a rule among the places, by its place.
  Nearest nearest(std::size_t rule) const;

 private:
  const MatcherData& matcher_;
  // By sentence: dot product with the query. Zeros for sentences of rules that are not active.
  Eigen::VectorXd latent_;
  std::vector<double> words_, characters_;
  double counting_ = 1.0;
  std::vector<double> values_;
};

}  // namespace velmora::detail
