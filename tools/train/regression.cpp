#include "regression.hpp"

#include <algorithm>
#include <cmath>

#include <Eigen/Eigenvalues>

#include "parallel.hpp"
#include "random.hpp"

namespace velmora::trainer {

namespace {

// Columns that are solved side by side: wide enough to keep the adders busy, narrow enough for a
// product with X to stay small.
constexpr Eigen::Index kBlock = 32;
constexpr std::size_t kRowsPerPiece = 2048;
constexpr int kMostSteps = 200;
constexpr double kSmallestResidual = 1e-4;

using ColumnSums = Eigen::Array<double, 1, Eigen::Dynamic>;

// matrix * block: each row by one thread, in the order of its stored places.
RowMatrix product(const SparseRows& matrix, const RowMatrix& block, int threads) {
  RowMatrix result = RowMatrix::Zero(static_cast<Eigen::Index>(matrix.rows()), block.cols());
  const std::size_t pieces = (matrix.rows() + kRowsPerPiece - 1) / kRowsPerPiece;
  for_each_piece(threads, pieces, [&](std::size_t piece, int) {
    const std::size_t end = std::min((piece + 1) * kRowsPerPiece, matrix.rows());
    for (std::size_t row = piece * kRowsPerPiece; row != end; ++row) {
      auto sum = result.row(static_cast<Eigen::Index>(row));
      for (std::size_t k = 0; k != matrix.row_size(row); ++k) {
        sum += matrix.row_values(row)[k] * block.row(matrix.row_columns(row)[k]);
      }
    }
  });
  return result;
}

// For each column the dot product of two, from the first word to the last.
ColumnSums column_products(const RowMatrix& first, const RowMatrix& second) {
  ColumnSums sums = ColumnSums::Zero(first.cols());
  for (Eigen::Index word = 0; word != first.rows(); ++word) {
    sums += first.row(word).cast<double>().array() * second.row(word).cast<double>().array();
  }
  return sums;
}

// a / b by columns, 0 where b is: a column that is solved stays as it is.
Eigen::RowVectorXf ratio(const ColumnSums& a, const ColumnSums& b) {
  return (b > 0.0).select(a / b.max(1e-300), 0.0).cast<float>().matrix();
}

// The system (X'AX + lambda I) W = X'AE.
class RidgeSystem {
 public:
  RidgeSystem(const TaughtTexts& texts, std::size_t words, double lambda, int threads)
      : by_text_(texts.rows),
        by_word_(transposed(texts.rows, words, texts.weights)),
        lambda_(static_cast<float>(lambda)),
        threads_(threads),
        diagonal_(Eigen::VectorXf::Constant(static_cast<Eigen::Index>(words), lambda_)) {
    for (std::size_t text = 0; text != by_text_.rows(); ++text) {
      for (std::size_t k = 0; k != by_text_.row_size(text); ++k) {
        const float value = by_text_.row_values(text)[k];
        diagonal_[by_text_.row_columns(text)[k]] += texts.weights[text] * value * value;
      }
    }
  }

  RowMatrix solve(const RowMatrix& right_side) const {
    RowMatrix solution = RowMatrix::Zero(right_side.rows(), right_side.cols());
    RowMatrix residual = right_side;
    RowMatrix direction = preconditioned(residual);
    ColumnSums size = column_products(residual, direction);
    const ColumnSums enough = size * (kSmallestResidual * kSmallestResidual);
    for (int step = 0; step != kMostSteps && (size > enough).any(); ++step) {
      const RowMatrix image = applied(direction);
      const Eigen::RowVectorXf length = ratio(size, column_products(direction, image));
      solution.array() += direction.array().rowwise() * length.array();
      residual.array() -= image.array().rowwise() * length.array();
      const RowMatrix next = preconditioned(residual);
      const ColumnSums next_size = column_products(residual, next);
      direction = next + direction * ratio(next_size, size).asDiagonal();
      size = next_size;
    }
    return solution;
  }

 private:
  RowMatrix applied(const RowMatrix& block) const {
    return product(by_word_, product(by_text_, block, threads_), threads_) + lambda_ * block;
  }

  RowMatrix preconditioned(const RowMatrix& residual) const {
    return diagonal_.cwiseInverse().asDiagonal() * residual;
  }

  const SparseRows& by_text_;
  SparseRows by_word_;
  float lambda_;
  int threads_;
  Eigen::VectorXf diagonal_;
};

}  // namespace

RowMatrix word_vectors(const TaughtTexts& texts, double lambda, int threads,
                       const std::function<void(double share)>& report) {
  const Eigen::Index columns = texts.products.cols();
  const RidgeSystem system(texts, static_cast<std::size_t>(texts.products.rows()), lambda, threads);
  RowMatrix vectors(texts.products.rows(), columns);
  for (Eigen::Index first = 0; first < columns; first += kBlock) {
    const Eigen::Index width = std::min(kBlock, columns - first);
    vectors.middleCols(first, width) = system.solve(texts.products.middleCols(first, width));
    report(static_cast<double>(width) / static_cast<double>(columns));
  }
  return vectors;
}

Eigen::MatrixXf principal_factors(const RowMatrix& vectors, const std::vector<double>& idf,
                                  int dim) {
  const Eigen::Map<const Eigen::VectorXd> weights(idf.data(), vectors.rows());
  const Eigen::MatrixXd weighted = weights.asDiagonal() * vectors.cast<double>();
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> components(weighted.transpose() * weighted);
  const Eigen::Index kept = std::min<Eigen::Index>(dim, vectors.cols());
  // The eigenvalues rise.
  const Eigen::MatrixXd directions = components.eigenvectors().rightCols(kept).rowwise().reverse();
  return (vectors.cast<double>() * directions).transpose().cast<float>();
}

void tell_apart_short_words(Eigen::MatrixXf& factors, double least, std::uint64_t start) {
  const auto square_lengths = factors.cast<double>().colwise().squaredNorm().eval();
  const double square_least = least * least * square_lengths.mean();
  for (Eigen::Index word = 0; word != factors.cols(); ++word) {
    const double missing = square_least - square_lengths[word];
    if (missing <= 0.0) {
      continue;
    }
    const auto size = static_cast<float>(std::sqrt(missing / static_cast<double>(factors.rows())));
    for (Eigen::Index k = 0; k != factors.rows(); ++k) {
      const auto place = static_cast<std::uint64_t>(word * factors.rows() + k);
      factors(k, word) += (random_bits(start, place) & 1U) == 0 ? size : -size;
    }
  }
}

}  // namespace velmora::trainer
