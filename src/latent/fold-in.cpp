#include "fold-in.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include <Eigen/Cholesky>
#include <Eigen/LU>

#include <velmora/preprocess.hpp>
#include <velmora/tfidf.hpp>

#include "eigen-cache-sizes.hpp"
#include "matrix-terms.hpp"

namespace VX::Dialog::detail {

namespace {

[[maybe_unused]] const bool kCacheSizesFixed = [] {
  fix_eigen_cache_sizes();
  return true;
}();

// How the short road compares with the direct one. With A = word_gram + lambda I, H = A^-1,
// c = 1 - missing_weight and z the values of the s terms,
//
//     (A + c U U')^-1 U z = H U (I + c U' H U)^-1 z
//
// (the identity of Sherman, Morrison and Woodbury): s D^2 + s^2 D + s^3 steps where the inverse
// takes D^3. Let M = I + c U' H U and w = M^-1 z. A is positive definite and c is not negative, so
// that no eigenvalue of M is below 1, its condition is at most its norm, and that of A + c U U' at
// most cond(A) |M|. To first order, every step of either road adds a few u = 2^-53 of what it
// computes, which the conditions magnify, and the final sum, the cancellation |H U| |w| / |q|. The
// two results then differ by at most
//
//     C u / P,   P = rcond(A) |q| / (|M| |H U| |w|),
//
// of the length of q. C is small: a few where P is near 1, and below 1.5 where P is below 1e-3 (the
// roundings of many terms seldom agree, and the 1-norms overestimate). With P at least
// kSmallestShare the difference stays below 1e-12 of the length; models in use have a P of 1e-3 to
// 1e-1, and differ by 1e-15. Where P is smaller, the direct road is taken, whose bits are then the
// result; so a sentence whose words cancel has no vector of mere rounding errors.
constexpr double kSmallestShare = 2e-4;

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

Eigen::VectorXd values_of(const std::vector<Term>& terms) {
  Eigen::VectorXd values(static_cast<Eigen::Index>(terms.size()));
  std::transform(terms.begin(), terms.end(), values.begin(),
                 [](const Term& term) { return term.value; });
  return values;
}

// D x s: (word_gram + U B + lambda I)^-1 U, the published way, step by step.
Eigen::MatrixXd direct_columns(const std::vector<Term>& terms, const Eigen::MatrixXd& U,
                               const wordsense_model& model, const Eigen::MatrixXd& word_gram) {
  Eigen::MatrixXd B(U.cols(), U.rows());
  for (Eigen::Index k = 0; k != U.cols(); ++k) {
    const Term& term = terms[static_cast<std::size_t>(k)];
    B.row(k) = (term.presence - model.missing_weight) * U.col(k).transpose();
  }
  Eigen::MatrixXd T = U * B;
  // (word_gram + U B) + lambda * I; off the diagonal lambda * 0 is added, which turns -0 into +0.
  const Eigen::VectorXd diagonal = (word_gram.diagonal() + T.diagonal()).array() + model.lambda;
  T = (word_gram + T).array() + model.lambda * 0.0;
  T.diagonal() = diagonal;
  // The explicit inverse and this association are the published ones: solving the system would be
  // cheaper and would round otherwise. T is factored in place, which is all that differs from
  // T.inverse().
  const Eigen::PartialPivLU<Eigen::Ref<Eigen::MatrixXd>> factored(T);
  const Eigen::MatrixXd inverse = factored.inverse();
  return inverse * U;
}

// The parts of the short road that do not depend on the values of the terms.
struct RankUpdate {
  Eigen::MatrixXd HU;  // D x s
  Eigen::MatrixXd M;   // s x s
};

// Nothing where the short road would be the longer one, or is not known to hold.
std::optional<RankUpdate> rank_update(const std::vector<Term>& terms, const Eigen::MatrixXd& U,
                                      const wordsense_model& model, const GramInverse& gram_inverse,
                                      const FoldedWords* words = nullptr) {
  const bool all_present = std::all_of(terms.begin(), terms.end(),
                                       [](const Term& term) { return term.presence == 1.0; });
  const double c = 1.0 - model.missing_weight;
  if (2 * U.cols() > U.rows() || !all_present || !(c >= 0.0) || !gram_inverse.is_accurate()) {
    return std::nullopt;
  }
  RankUpdate update;
  if (words != nullptr) {
    update.HU = words->of(terms);
  } else {
    update.HU = gram_inverse.matrix() * U;
  }
  update.M = c * (U.transpose() * update.HU);
  update.M.diagonal().array() += 1.0;
  return update;
}

double one_norm(const Eigen::MatrixXd& matrix) {
  return matrix.cwiseAbs().colwise().sum().maxCoeff();
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

Eigen::VectorXd fold_in_directly(const std::vector<Term>& terms, const wordsense_model& model,
                                 const Eigen::MatrixXd& word_gram) {
  const Eigen::MatrixXd U = gather_factors(terms, model.word_factors);
  return direct_columns(terms, U, model, word_gram) * values_of(terms);
}

FoldedWords::FoldedWords(std::vector<int> word_ids, const wordsense_model& model,
                         const GramInverse& gram_inverse)
    : word_ids_(std::move(word_ids)) {
  std::sort(word_ids_.begin(), word_ids_.end());
  word_ids_.erase(std::unique(word_ids_.begin(), word_ids_.end()), word_ids_.end());
  if (gram_inverse.is_accurate()) {  // otherwise the direct road is taken
    columns_ = gram_inverse.matrix() * model.word_factors(Eigen::all, word_ids_);
  }
}

Eigen::MatrixXd FoldedWords::of(const std::vector<Term>& terms) const {
  Eigen::MatrixXd gathered(columns_.rows(), static_cast<Eigen::Index>(terms.size()));
  Eigen::Index column = 0;
  for (const Term& term : terms) {
    const auto word = std::lower_bound(word_ids_.begin(), word_ids_.end(), term.word_id);
    gathered.col(column++) = columns_.col(word - word_ids_.begin());
  }
  return gathered;
}

Eigen::VectorXd fold_in_terms(const std::vector<Term>& terms, const wordsense_model& model,
                              const Eigen::MatrixXd& word_gram, const GramInverse& gram_inverse,
                              const FoldedWords* words) {
  const Eigen::MatrixXd U = gather_factors(terms, model.word_factors);
  const Eigen::VectorXd z = values_of(terms);
  if (const auto update = rank_update(terms, U, model, gram_inverse, words)) {
    const Eigen::VectorXd w = update->M.llt().solve(z);
    Eigen::VectorXd q = update->HU * w;
    const double largest = one_norm(update->M) * update->HU.norm() * w.norm();
    if (std::isfinite(largest) &&
        kSmallestShare * largest <= gram_inverse.reciprocal_condition() * q.norm()) {
      return q;
    }
  }
  return direct_columns(terms, U, model, word_gram) * z;
}

Eigen::MatrixXd fold_in_columns(const std::vector<Term>& terms, const wordsense_model& model,
                                const Eigen::MatrixXd& word_gram, const GramInverse& gram_inverse) {
  const Eigen::MatrixXd U = gather_factors(terms, model.word_factors);
  if (const auto update = rank_update(terms, U, model, gram_inverse)) {
    return update->M.llt().solve(update->HU.transpose()).transpose();
  }
  return direct_columns(terms, U, model, word_gram);
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
      const Eigen::VectorXd q =
          fold_in_terms(terms, space.model, space.word_gram, space.gram_inverse);
      folded.emplace_back(q.begin(), q.end());
    }
  }
  vectors.reserve(vectors.size() + folded.size());
  std::move(folded.begin(), folded.end(), std::back_inserter(vectors));
}

}  // namespace VX::Dialog::detail
