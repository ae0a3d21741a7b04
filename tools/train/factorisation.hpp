// Weighted factorisation of the corpus by alternating least squares.
//
// With X the V x N matrix of tf-idf weights (words by documents), P the D x V word factors, q(j)
// the latent vector of document j, a(j) its weight, and W(i, j) = 1 where document j has word i and
// m elsewhere, a sweep lowers
//
//     F = sum_j a(j) [ sum_i W(i, j) (p(i).q(j) - X(i, j))^2 + lambda |q(j)|^2 ]
//         + lambda sum_i |p(i)|^2
//
// first over all q, then over all p (W. Guo and M. Diab, "Modeling Sentences in the Latent Space",
// ACL 2012; Y. Hu, Y. Koren, C. Volinsky, "Collaborative Filtering for Implicit Feedback Datasets",
// ICDM 2008). The document step is what the library does with a sentence. docs/training.md derives
// the forms that are computed here, none of which touches the zeros of X.
//
// Results are the same, bit for bit, for any number of threads. Used by training.cpp. Tested by
// tools/train/tests/factorisation-test.cpp against a direct form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include <Eigen/Core>

#include "sparse-rows.hpp"

namespace velmora::trainer {

struct FactorisationSettings {
  int dim = 100;
  double lambda = 20.0;
  double missing_weight = 0.01;
  int threads = 1;
};

/// What the factorisation works on. Both matrices hold the same values, up to the weights.
struct TrainingCorpus {
  /// N x V: tf-idf weights of each document.
  SparseRows by_document;
  /// V x N: of each word, the weights times the root of the document's weight.
  SparseRows by_word;
  /// Roots of the document weights a(j).
  std::vector<float> root_weights;
};

/// Sets up by_word. document_weights: one for each row, 0 or more.
TrainingCorpus make_training_corpus(SparseRows by_document, std::size_t vocabulary_size,
                                    const std::vector<double>& document_weights);

/// D x V factors to begin with: independent, nearly normal, of variance 1.
Eigen::MatrixXf first_word_factors(int dim, std::size_t vocabulary_size, std::uint64_t start);

/// Work of one sweep in multiplications, roughly: the unit in which run_sweep reports.
double sweep_work(const TrainingCorpus& corpus, const FactorisationSettings& settings);

/// One sweep: new document vectors, then new word factors in place of the old. Returns F for both.
///
/// word_factors   D x V, in and out
/// report         called from any thread with the work just done
double run_sweep(const TrainingCorpus& corpus, const FactorisationSettings& settings,
                 Eigen::MatrixXf& word_factors, const std::function<void(double)>& report);

/// The side that is solved for, given the other: for each row r of `rows`, with U the columns of
/// `given` that the row stores and z its values,
///
///     result.col(r) = (m G + (1 - m) U U' + lambda I)^-1 U z
///
/// given   D x (columns of rows)
/// gram    D x D: G = given * given'
Eigen::MatrixXf solve_side(const SparseRows& rows, const Eigen::MatrixXf& given,
                           const Eigen::MatrixXd& gram, const FactorisationSettings& settings,
                           const std::function<void(double)>& report);

/// factors * factors', added up in double precision.
Eigen::MatrixXd gram_matrix(const Eigen::MatrixXf& factors, int threads);

}  // namespace velmora::trainer
