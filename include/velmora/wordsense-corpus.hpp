// The corpus record: a batch of sentences in the form in which inference takes it.
//
// Every caller keeps this order: construct the record, initialize_wordsense_corpus,
// wordsense_inference, delete_wordsense_corpus, and later the destructor. Tested by
// tests/latent/matrix-files-test.cpp.
#pragma once

#include <velmora/eigen.hpp>
#include <velmora/export.hpp>
#include <velmora/matrix-files.hpp>

/// A V x S term matrix, a weight matrix of the same pattern, their transposes, and every column of
/// the four as a dense vector. The dense columns take 4 * V * S doubles.
///
/// The arrays belong to the record, yet the destructor does not release them:
/// delete_wordsense_corpus does, and must run once before the record goes. It leaves the pointers
/// as they were, so it must not run twice.
struct VELMORA_EXPORT wordsense_corpus {
  wordsense_corpus();
  ~wordsense_corpus();

  /// V x S: tf-idf weights, one row a word id, one column a sentence.
  Eigen::SparseMatrix<double> data;
  /// S x V: transpose of data.
  Eigen::SparseMatrix<double> data_t;
  /// V x S: 1.0 wherever data stores a coefficient, a stored 0 included.
  Eigen::SparseMatrix<double> weights;
  /// S x V: transpose of weights.
  Eigen::SparseMatrix<double> weights_t;
  /// S vectors of length V.
  Eigen::VectorXd* data_cols;
  /// V vectors of length S.
  Eigen::VectorXd* data_t_cols;
  /// S vectors of length V.
  Eigen::VectorXd* weights_cols;
  /// V vectors of length S.
  Eigen::VectorXd* weights_t_cols;
};

namespace VX::Dialog {

/// Fills a fresh record from a V x S matrix, which is copied. Always true. On a record that is
/// filled already the old arrays are lost. Throws std::bad_alloc.
VELMORA_EXPORT bool initialize_wordsense_corpus(wordsense_corpus& corpus,
                                                Eigen::SparseMatrix<double>& data);

/// Makes `weights` a copy of `data` with every stored coefficient set to 1.0.
VELMORA_EXPORT void initialize_weights(Eigen::SparseMatrix<double>& weights,
                                       Eigen::SparseMatrix<double>& data);

/// Expands a matrix to dense columns: a new array of as many vectors as there are columns, each as
/// long as there are rows. The caller releases it with delete[].
VELMORA_EXPORT Eigen::VectorXd* get_smat_value(Eigen::SparseMatrix<double>& matrix);

/// Releases the four arrays that are not null. The pointers keep their values.
VELMORA_EXPORT void delete_wordsense_corpus(wordsense_corpus& corpus);

/// A matrix of the exchanged shape with the coefficients at their old coordinates: the argument
/// itself when it is square. Coefficients outside the exchanged shape are dropped. Not to be
/// confused with a matrix transpose.
VELMORA_EXPORT Eigen::SparseMatrix<double> transpose(Eigen::SparseMatrix<double>& matrix);

}  // namespace VX::Dialog
