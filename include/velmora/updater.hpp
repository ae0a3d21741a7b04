// Sentences to one latent vector, without an engine around it.
//
// Tested by tests/latent/inference-test.cpp.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <fennel/stemmer.hpp>
#include <velmora/eigen.hpp>
#include <velmora/export.hpp>
#include <velmora/wordsense-model.hpp>

namespace VX::Dialog {

namespace detail {
class GramInverse;
}

/// Holds its own copies of the tables and of the model; nothing in it changes after construction,
/// so calls may overlap as far as the stemmers passed to them allow it.
class VELMORA_EXPORT Updater {
 public:
  /// vocabulary_table  word to word id; its size is V
  /// frequencies       stem to count; kept, read by nothing
  /// idf               word id to idf
  /// latent_model      word_factors is D x V
  /// gram              D x D: missing_weight * word_factors * word_factors'
  Updater(std::map<std::string, int> vocabulary_table, std::map<std::string, int> frequencies,
          std::map<int, double> idf, wordsense_model latent_model, Eigen::MatrixXd gram);
  ~Updater();

  /// The latent vector (D values) of the joint word counts of all sentences; zeros when no word is
  /// known. Updates nothing. `stemmer` stays the caller's.
  std::vector<double> update_vector(const std::vector<std::string>& sentences, Stemmer* stemmer);

 private:
  std::map<std::string, int> vocabulary;
  std::map<std::string, int> frequency_table;
  std::map<int, double> idf_table;
  wordsense_model model;
  Eigen::MatrixXd word_gram;
  std::shared_ptr<const detail::GramInverse> gram_inverse;
};

}  // namespace VX::Dialog
