#include "fold-in.hpp"

#include <algorithm>
#include <iterator>

#include <Eigen/LU>

#include <velmora/preprocess.hpp>
#include <velmora/tfidf.hpp>

#include "../support/eigen-cache-sizes.hpp"
#include "matrix-terms.hpp"

namespace VX::Dialog::detail {

namespace {

[[maybe_unused]] const bool kCacheSizesFixed = [] {
  fix_eigen_cache_sizes();
  return true;
}();

// D x s: the factors of the terms, side by side.
Eigen::MatrixXd gather_factors(const std::vector<Term>& terms, const Eigen::MatrixXd& factors) {
  Eigen::MatrixXd gathered(factors.rows(), static_cast<Eigen::Index>(terms.size()));
  Eigen::Index column = 0;
  for (const Term& term : terms) {
    if (term.word_id >= 0 && term.word_id < factors.cols()) {
      gathered.col(column) = factors.col(term.word_id);
    } else {
      gathered.col(column).setZero();
    }
    ++column;
  }
  return gathered;
}

}  // namespace

Eigen::MatrixXd compute_word_gram(const wordsense_model& model) {
  // The weight comes first, so that it is the scale factor of the product and not a pass of its
  // own.
  return model.missing_weight * (model.word_factors * model.word_factors.transpose());
}

bool shapes_agree(const wordsense_model& model, const Eigen::MatrixXd& word_gram) {
  return model.dim > 0 && model.word_factors.rows() == model.dim && word_gram.rows() == model.dim &&
         word_gram.cols() == model.dim;
}

Eigen::VectorXd fold_in_terms(const std::vector<Term>& terms, const wordsense_model& model,
                              const Eigen::MatrixXd& word_gram) {
  const Eigen::MatrixXd U = gather_factors(terms, model.word_factors);
  Eigen::MatrixXd B(U.cols(), U.rows());
  Eigen::VectorXd v(U.cols());
  for (Eigen::Index k = 0; k != U.cols(); ++k) {
    const Term& term = terms[static_cast<std::size_t>(k)];
    B.row(k) = (term.presence - model.missing_weight) * U.col(k).transpose();
    v(k) = term.value;
  }
  Eigen::MatrixXd T = U * B;
  // (word_gram + U B) + lambda * I; off the diagonal lambda * 0 is added, which settles signs of
  // zero.
  const Eigen::VectorXd diagonal = (word_gram.diagonal() + T.diagonal()).array() + model.lambda;
  T = (word_gram + T).array() + model.lambda * 0.0;
  T.diagonal() = diagonal;
  // The explicit inverse and this association are the published ones: solving the system would be
  // cheaper and would round otherwise. T is factored in place, which is all that differs from
  // T.inverse().
  const Eigen::PartialPivLU<Eigen::Ref<Eigen::MatrixXd>> factored(T);
  const Eigen::MatrixXd inverse = factored.inverse();
  const Eigen::MatrixXd Y = inverse * U;
  return Y * v;
}

void fold_in(const RuleTable& sentences, const LatentSpace& space, VectorTable& vectors) {
  WordIdTable word_ids;
  word_indices(sentences, space.vocabulary, word_ids);
  WeightTable weights;
  tfidf(word_ids, space.idf, weights);

  const auto dim = static_cast<std::size_t>(std::max(space.model.dim, 0));
  const bool computable = shapes_agree(space.model, space.word_gram);
  const auto vocabulary_size = static_cast<long>(space.vocabulary.size());
  VectorTable folded;
  folded.reserve(weights.size());
  std::vector<Term> terms;
  for (const auto& [sentence_id, sentence_weights] : weights) {
    terms.clear();
    for (const auto& [word_id, weight] : matrix_terms(sentence_weights, vocabulary_size)) {
      terms.push_back({word_id, 1.0, weight});
    }
    if (terms.empty() || !computable) {
      folded.emplace_back(dim, 0.0);
    } else {
      const Eigen::VectorXd q = fold_in_terms(terms, space.model, space.word_gram);
      folded.emplace_back(q.begin(), q.end());
    }
  }
  vectors.reserve(vectors.size() + folded.size());
  std::move(folded.begin(), folded.end(), std::back_inserter(vectors));
}

}  // namespace VX::Dialog::detail
