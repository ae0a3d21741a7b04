#include <algorithm>

#include <velmora/inference.hpp>

#include "fold-in.hpp"

namespace {

std::vector<VX::Dialog::detail::Term> terms_of(const wordsense_corpus& corpus,
                                               Eigen::Index sentence) {
  std::vector<VX::Dialog::detail::Term> terms;
  const Eigen::VectorXd& values = corpus.data_cols[sentence];
  const Eigen::VectorXd& presence = corpus.weights_cols[sentence];
  // The stored pattern decides which words are present; a stored 0 or less stays with its word.
  for (Eigen::SparseMatrix<double>::InnerIterator entry(corpus.data, sentence); entry; ++entry) {
    const Eigen::Index row = entry.row();
    terms.push_back({static_cast<int>(row), presence(row), values(row) * presence(row)});
  }
  return terms;
}

Eigen::Index count_non_zeros(const Eigen::Ref<const Eigen::VectorXd>& vector) {
  return (vector.array() != 0.0).count();
}

}  // namespace

void wordsense_inference(wordsense_corpus& corpus, wordsense_model& model, Eigen::MatrixXd& latent,
                         Eigen::MatrixXd& word_gram) {
  latent.resize(0, 0);  // first, so that a failed allocation leaves a valid matrix
  latent.resize(std::max(model.dim, 0), corpus.data.cols());
  const bool computable = VX::Dialog::detail::shapes_agree(model, word_gram);
  for (Eigen::Index sentence = 0; sentence != corpus.data.cols(); ++sentence) {
    const auto terms = terms_of(corpus, sentence);
    if (terms.empty() || !computable) {
      latent.col(sentence).setZero();
    } else {
      latent.col(sentence) = VX::Dialog::detail::fold_in_directly(terms, model, word_gram);
    }
  }
}

Eigen::MatrixXd getNonZeros(Eigen::MatrixXd& matrix, const Eigen::SparseVector<double>& pattern) {
  Eigen::MatrixXd chosen = Eigen::MatrixXd::Zero(matrix.rows(), pattern.nonZeros());
  Eigen::Index column = 0;
  for (Eigen::SparseVector<double>::InnerIterator entry(pattern); entry; ++entry) {
    if (entry.index() < matrix.cols()) {
      chosen.col(column) = matrix.col(entry.index());
    }
    ++column;
  }
  return chosen;
}

Eigen::MatrixXd filterMat(Eigen::MatrixXd& matrix) {
  // The first column alone sets the height; callers pass columns with equally many entries.
  const Eigen::Index height = matrix.cols() == 0 ? 0 : count_non_zeros(matrix.col(0));
  Eigen::MatrixXd condensed = Eigen::MatrixXd::Zero(height, matrix.cols());
  for (Eigen::Index column = 0; column != matrix.cols(); ++column) {
    Eigen::Index place = 0;
    for (const double value : matrix.col(column)) {
      if (value != 0.0 && place < height) {
        condensed(place++, column) = value;
      }
    }
  }
  return condensed;
}

Eigen::VectorXd filter_vec_(Eigen::VectorXd& vector) {
  // Two tests on purpose: entries that are not 0 count for the length, entries above 0 are placed.
  Eigen::VectorXd condensed = Eigen::VectorXd::Zero(count_non_zeros(vector));
  Eigen::Index place = 0;
  for (const double value : vector) {
    if (value > 0.0) {
      condensed(place++) = value;
    }
  }
  return condensed;
}

Eigen::VectorXd filter_vec_2(Eigen::VectorXd vector) {
  const Eigen::Index count = count_non_zeros(vector);
  Eigen::VectorXd scattered = Eigen::VectorXd::Zero(count);
  // Entry i goes to i * count, so none but the first has a place inside.
  if (count != 0 && vector(0) != 0.0) {
    scattered(0) = vector(0);
  }
  return scattered;
}
