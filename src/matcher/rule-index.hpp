// Some rules of a matcher, laid out for the scan of a query.
//
// A matcher has one index over all its rules; a set of active rules has its own, so that a query
// pays for what is active. Not installed. Tested by tests/matcher/matcher-test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <Eigen/Core>

#include "../ranking/row-index.hpp"
#include "sentence-views.hpp"

namespace velmora::detail {

/// For each feature the sentences that have it.
class Postings {
 public:
  /// vectors     of all sentences of a matcher
  /// sentences   those to be found, which are counted from 0 from here on
  /// size        number of features
  Postings(const std::vector<SparseVector>& vectors, const std::vector<std::size_t>& sentences,
           std::size_t size);

  /// The dot product of a query with each sentence. Sums run by ascending feature, so they are the
  /// same whichever sentences are asked for.
  std::vector<double> dots(const SparseVector& query) const;

 private:
  struct Posting {
    std::uint32_t sentence;
    float value;
  };

  std::size_t sentence_count_;
  std::vector<std::size_t> first_;  // of each feature, and the end
  std::vector<Posting> postings_;
};

/// The views of all sentences of a matcher.
struct SentenceTable {
  Eigen::MatrixXd latent;  ///< D x n
  std::vector<SparseVector> words;
  std::vector<SparseVector> characters;
};

/// Immutable.
struct RuleIndex {
  /// places           of the rules, by ascending id
  /// first_sentence   of each rule of the matcher, and the end
  /// linear           D x rules of the matcher: what is linear in the latent vector of a query
  RuleIndex(std::vector<std::size_t> rule_places, const std::vector<std::size_t>& first_sentence,
            const SentenceTable& table, const Eigen::MatrixXd& linear, const Views& views);

  std::vector<std::size_t> places;
  /// The first sentence of each of them, and the end, counted within this index.
  std::vector<std::size_t> first;
  /// The number of each sentence among all of the matcher.
  std::vector<std::size_t> sentences;
  Postings words;
  Postings characters;
  /// The latent vectors of the sentences, and then the linear parts of the rules.
  VX::Dialog::detail::RowIndex latent;
  /// The rows of `latent`: 0, 1, 2 and so on.
  std::vector<int> rows;
};

}  // namespace velmora::detail
