#include <iterator>

#include <velmora/updater.hpp>

#include "../latent/fold-in.hpp"
#include "../support/tables.hpp"

namespace VX::Dialog {

using detail::IdfTable;
using detail::StemCounts;
using detail::VectorTable;
using detail::Vocabulary;

Updater::Updater(Vocabulary vocabulary_table, StemCounts frequencies, IdfTable idf,
                 wordsense_model latent_model, Eigen::MatrixXd gram)
    : vocabulary(std::move(vocabulary_table)),
      frequency_table(std::move(frequencies)),
      idf_table(std::move(idf)),
      model(latent_model),
      word_gram(std::move(gram)),
      gram_inverse(std::make_shared<const detail::GramInverse>(word_gram, model.lambda)) {}

Updater::~Updater() = default;

std::vector<double> Updater::update_vector(const std::vector<std::string>& sentences,
                                           Stemmer* stemmer) {
  std::vector<std::string> bag;
  for (const std::string& sentence : sentences) {
    std::vector<std::string> stems;
    stemmer->stem_sentence(sentence, stems);
    std::move(stems.begin(), stems.end(), std::back_inserter(bag));
  }
  VectorTable vectors;
  detail::fold_in({{0, std::move(bag)}}, {vocabulary, idf_table, model, word_gram, *gram_inverse},
                  vectors);
  return std::move(vectors.front());
}

}  // namespace VX::Dialog
