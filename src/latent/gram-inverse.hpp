// What the fold-ins of all sentences of a model have in common, computed once.
//
// Every sentence asks for the inverse of word_gram + lambda I plus a part of its own, which is of
// low rank. GramInverse is the inverse of the common part; fold-in.hpp adds the sentence's. Not
// installed. Tested by tests/latent/fold-in-test.cpp.
#pragma once

#include <velmora/eigen.hpp>

namespace VX::Dialog::detail {

/// H = (word_gram + lambda I)^-1, D x D.
class GramInverse {
 public:
  /// The inverse for no model.
  GramInverse() = default;
  GramInverse(const Eigen::MatrixXd& word_gram, double lambda);

  /// Whether this was computed from these numbers, bit by bit. Costs a pass over the gram, little
  /// beside a fold-in; so an owner whose gram others may write to can ask before each use.
  bool is_of(const Eigen::MatrixXd& word_gram, double lambda) const;

  /// Whether H is accurate: the inverse of a symmetric, positive definite matrix with a reciprocal
  /// condition of at least 1e-3. A gram from factors, with a positive lambda, is the former; models
  /// in use have a condition of 0.1.
  bool is_accurate() const { return reciprocal_condition_ > 0.0; }

  /// The reciprocal condition, in the 1-norm, of what was inverted; 0 when H is not accurate.
  double reciprocal_condition() const { return reciprocal_condition_; }

  /// H; its numbers mean something only when it is accurate.
  const Eigen::MatrixXd& matrix() const { return inverse_; }

 private:
  Eigen::MatrixXd word_gram_;
  double lambda_ = 0.0;
  Eigen::MatrixXd inverse_;
  double reciprocal_condition_ = 0.0;
};

}  // namespace VX::Dialog::detail
