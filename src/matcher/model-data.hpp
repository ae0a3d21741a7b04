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
  explicit StemmerPool(std::string language) : language_(std::move(language)) {
    idle_.reserve(kMostIdle);
  }

  /// Lends a stemmer to `use`, which takes a Stemmer&.
  template <typename Use>
  auto with_stemmer(const Use& use) const {
    const Loan loan(*this);
    return use(*loan.stemmer);
  }

 private:
  struct Loan {
    explicit Loan(const StemmerPool& of) : pool(of), stemmer(of.take()) {}
    ~Loan() { pool.give_back(std::move(stemmer)); }
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;

    const StemmerPool& pool;
    std::unique_ptr<VX::Dialog::Stemmer> stemmer;
  };

  std::unique_ptr<VX::Dialog::Stemmer> take() const;
  void give_back(std::unique_ptr<VX::Dialog::Stemmer> stemmer) const noexcept;

  // A host may match from many threads for a while; what they leave behind stays small.
  static constexpr std::size_t kMostIdle = 16;

  std::string language_;
  mutable std::mutex mutex_;
  mutable std::vector<std::unique_ptr<VX::Dialog::Stemmer>> idle_;
};

/// A sentence cut into words.
struct SentenceText {
  std::vector<std::string> stems;  ///< sorted, without repeats
  std::vector<std::string> words;  ///< as they were typed, but normalised and in lower case
};

struct ModelData {
  explicit ModelData(const std::string& code)
      : language(code), stemmers(code), splitters("words as they are") {}

  std::string language;
  std::filesystem::path directory;
  std::map<std::string, int, std::less<>> vocabulary;  ///< stem to word id, 0 to V - 1
  std::vector<double> idf;                             ///< by word id
  double rarest_idf = 0.0;                             ///< the highest of them
  wordsense_model factors;
  Eigen::MatrixXd word_gram;
  VX::Dialog::detail::GramInverse gram_inverse;
  StemmerPool stemmers;
  StemmerPool splitters;  ///< of no language: they find words and do not stem them

  SentenceText text(const std::string& sentence) const;
  std::vector<std::string> stems(const std::string& sentence) const;

  /// What each stem adds to the latent vector of a sentence: D x s, a column for each of `stems`
  /// (distinct); zeros for one that is not known. The sum of the columns is the vector, not scaled.
  Eigen::MatrixXd latent_parts(const std::vector<std::string>& stems) const;

  /// The latent vector of a sentence (D), scaled to length 1; zeros without a known stem.
  Eigen::VectorXd latent_vector(const std::vector<std::string>& stems) const;

  /// The same for many sentences together, D x n: in a fraction of the time, since words repeat.
  Eigen::MatrixXd latent_vectors(const std::vector<SentenceText>& sentences) const;
};

}  // namespace velmora::detail
