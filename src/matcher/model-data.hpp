// The loaded tables of a Model, and its stemmers.
//
// Not installed. Tested by tests/matcher/model-test.cpp.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <fennel/stemmer.hpp>
#include <velmora/model.hpp>
#include <velmora/wordsense-model.hpp>

#include "../latent/fold-in.hpp"

namespace velmora::detail {

/// Stemmers of one language for any number of threads. A Stemmer serves one thread at a time: a
/// call borrows one, and there are never more than calls that overlapped.
class StemmerPool {
 public:
  explicit StemmerPool(std::string language) : language_(std::move(language)) {}

  /// Stems of a sentence, sorted and without repeats.
  std::vector<std::string> stems(const std::string& sentence) const;

 private:
  std::string language_;
  mutable std::mutex mutex_;
  mutable std::vector<std::unique_ptr<VX::Dialog::Stemmer>> idle_;
};

struct ModelData {
  explicit ModelData(const std::string& code) : language(code), stemmers(code) {}

  std::string language;
  std::filesystem::path directory;
  std::map<std::string, int, std::less<>> vocabulary;  ///< stem to word id, 0 to V - 1
  std::vector<double> idf;                             ///< by word id
  double rarest_idf = 0.0;                             ///< the highest of them
  wordsense_model factors;
  Eigen::MatrixXd word_gram;
  VX::Dialog::detail::GramInverse gram_inverse;
  StemmerPool stemmers;

  /// What each stem adds to the latent vector of a sentence: D x s, a column for each of `stems`
  /// (distinct); zeros for one that is not known. The sum of the columns is the vector, not scaled.
  Eigen::MatrixXd latent_parts(const std::vector<std::string>& stems) const;

  /// The latent vector of a sentence (D), scaled to length 1; zeros without a known stem.
  Eigen::VectorXd latent_vector(const std::vector<std::string>& stems) const;
};

}  // namespace velmora::detail
