#include "gram-inverse.hpp"

#include <cstring>

#include <Eigen/Cholesky>

namespace VX::Dialog::detail {

namespace {

constexpr double kSmallestCondition = 1e-3;

// A product of a matrix with its transpose may round its two halves differently.
constexpr double kSymmetric = 1e-14;

bool same_bits(const double* first, const double* second, Eigen::Index count) {
  return count == 0 ||
         std::memcmp(first, second, sizeof(double) * static_cast<std::size_t>(count)) == 0;
}

}  // namespace

GramInverse::GramInverse(const Eigen::MatrixXd& word_gram, double lambda)
    : word_gram_(word_gram), lambda_(lambda) {
  const Eigen::Index dim = word_gram.rows();
  // A NaN is not approximately itself, so what is not finite ends here, too.
  if (dim == 0 || word_gram.cols() != dim ||
      !word_gram.isApprox(word_gram.transpose(), kSymmetric)) {
    return;
  }
  Eigen::MatrixXd common = word_gram;
  common.diagonal().array() += lambda;
  const Eigen::LLT<Eigen::MatrixXd> factored(common);
  if (factored.info() != Eigen::Success) {
    return;
  }
  const double reciprocal_condition = factored.rcond();
  if (reciprocal_condition >= kSmallestCondition) {
    inverse_ = factored.solve(Eigen::MatrixXd::Identity(dim, dim));
    reciprocal_condition_ = reciprocal_condition;
  }
}

bool GramInverse::is_of(const Eigen::MatrixXd& word_gram, double lambda) const {
  return word_gram.rows() == word_gram_.rows() && word_gram.cols() == word_gram_.cols() &&
         same_bits(word_gram.data(), word_gram_.data(), word_gram.size()) &&
         same_bits(&lambda, &lambda_, 1);
}

}  // namespace VX::Dialog::detail
