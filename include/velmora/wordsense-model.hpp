// The latent model: the word side of a weighted factorisation of a term-by-sentence matrix.
//
// The method is weighted textual matrix factorisation (W. Guo and M. Diab, "Modeling Sentences in
// the Latent Space", ACL 2012). Files: docs/file-formats.md. Tested by
// tests/latent/matrix-files-test.cpp.
#pragma once

#include <string>

#include <velmora/eigen.hpp>
#include <velmora/export.hpp>

/// Word factors and the two constants of the factorisation. Only read after loading, so any number
/// of inference calls may share it.
struct VELMORA_EXPORT wordsense_model {
  wordsense_model();
  /// As the assignment.
  wordsense_model(const wordsense_model& other);
  ~wordsense_model();
  /// Copies all fields, each matrix with its shape.
  wordsense_model& operator=(const wordsense_model& other);

  /// D x V: column i is the latent vector of word id i.
  Eigen::MatrixXd word_factors;
  /// Stays empty; copied with the rest.
  Eigen::MatrixXd reserved_factors;
  /// D, the number of latent dimensions; 0 means that no model is loaded.
  int dim = 0;
  /// Ridge term: the multiple of the identity added to every system that inference solves.
  double lambda = 0.0;
  /// Weight of a word that is absent from a sentence, in [0, 1]; a present word weighs 1.
  double missing_weight = 0.0;
};

namespace VX::Dialog {

/// Reads the scalar file at `path` and the factors at `path` + ".conf".
///
/// False, model untouched: the scalar file can't be opened. True says no more than that it could:
/// a missing ".conf" is logged and leaves word_factors as they were, and numbers that can't be read
/// become 0 or stay as they were. Throws std::bad_alloc when the header asks for too much.
VELMORA_EXPORT bool read_wordsense_model(std::string path, wordsense_model& model);

/// Writes the scalar file alone: dim, lambda and missing_weight, six significant digits. The
/// factors are not written; a model that is to be read back needs its ".conf" file beside it.
/// False: the file can't be opened for writing.
VELMORA_EXPORT bool write_wordsense_model(char* path, wordsense_model& model);

}  // namespace VX::Dialog
