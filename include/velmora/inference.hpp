// Fold-in: the latent vectors of sentences, given the word side of the model.
//
// For a sentence with values z for its words and their factors U (D x s), with all other words of
// the vocabulary weighing m = missing_weight, the latent vector that best reconstructs the sentence
// under weighted least squares with a ridge term lambda is
//
//   q = (m P P' + (1 - m) U U' + lambda I)^-1 U z
//
// the sentence-side step of weighted alternating least squares (W. Guo and M. Diab, "Modeling
// Sentences in the Latent Space", ACL 2012). m P P' does not depend on the sentence: word_gram.
// Tested by tests/latent/inference-test.cpp.
#pragma once

#include <velmora/eigen.hpp>
#include <velmora/export.hpp>
#include <velmora/wordsense-corpus.hpp>
#include <velmora/wordsense-model.hpp>

/// Folds every sentence of a corpus into the latent space.
///
/// corpus     V x S, filled by initialize_wordsense_corpus; read are data, data_cols and
///            weights_cols
/// model      word_factors is D x V; lambda > 0 and missing_weight in [0, 1] keep results
///            finite
/// latent     out: resized to D x S; a sentence without stored coefficients is exactly 0
/// word_gram  D x D: missing_weight * word_factors * word_factors'
///
/// Factors without D rows or a gram that is not D x D give columns of zeros; a word outside the
/// factors adds nothing. Throws only std::bad_alloc, and then leaves `latent` half written. Calls
/// may overlap if each has its own corpus and latent.
VELMORA_EXPORT void wordsense_inference(wordsense_corpus& corpus, wordsense_model& model,
                                        Eigen::MatrixXd& latent, Eigen::MatrixXd& word_gram);

/// The columns of a matrix whose numbers are the stored indices of a vector, in their order. An
/// index outside the matrix gives a column of zeros.
VELMORA_EXPORT Eigen::MatrixXd getNonZeros(Eigen::MatrixXd& matrix,
                                           const Eigen::SparseVector<double>& pattern);

/// Condenses each column to its non-zero entries, from the top. The result has as many rows as the
/// first column has such entries; further entries of other columns are dropped, missing ones are 0.
VELMORA_EXPORT Eigen::MatrixXd filterMat(Eigen::MatrixXd& matrix);

/// As many elements as the vector has entries that are not 0, holding those above 0 in their order;
/// the rest, which negative entries leave over, is 0.
VELMORA_EXPORT Eigen::VectorXd filter_vec_(Eigen::VectorXd& vector);

/// With c entries that are not 0, a vector of c elements with entry i at position i * c: only an
/// entry at 0 lands inside, the rest is dropped. A scatter, not a compaction; nothing uses it.
VELMORA_EXPORT Eigen::VectorXd filter_vec_2(Eigen::VectorXd vector);
