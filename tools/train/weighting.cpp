#include "weighting.hpp"

#include <algorithm>
#include <utility>

#include "six-digits.hpp"

namespace velmora::trainer {

namespace {

constexpr std::int32_t kUnknownWord = -1;

// By number of the word in the corpus.
std::vector<std::int32_t> word_ids(const Corpus& corpus,
                                   const std::vector<DictionaryEntry>& dictionary) {
  std::vector<std::int32_t> ids(corpus.words.size(), kUnknownWord);
  for (std::size_t word_id = 0; word_id != dictionary.size(); ++word_id) {
    ids[static_cast<std::size_t>(dictionary[word_id].corpus_word)] =
        static_cast<std::int32_t>(word_id);
  }
  return ids;
}

using CountedWord = std::pair<std::int32_t, float>;

// Known words of a document by id, with their counts.
std::vector<CountedWord> known_words(const SparseRows& counts, std::size_t document,
                                     const std::vector<std::int32_t>& ids) {
  std::vector<CountedWord> known;
  const auto words = counts.row_columns(document);
  for (std::size_t k = 0; k != words.size(); ++k) {
    const std::int32_t word_id = ids[static_cast<std::size_t>(words[k])];
    if (word_id != kUnknownWord) {
      known.emplace_back(word_id, counts.row_values(document)[k]);
    }
  }
  std::sort(known.begin(), known.end());
  return known;
}

// By number of the label.
std::vector<double> weights_of(const std::vector<std::string>& labels,
                               const std::map<std::string, double>& label_weights) {
  std::vector<double> weights;
  for (const std::string& label : labels) {
    const auto weight = label_weights.find(label);
    weights.push_back(weight == label_weights.end() ? 1.0 : weight->second);
  }
  return weights;
}

}  // namespace

WeightedDocuments weigh_documents(const Corpus& corpus,
                                  const std::vector<DictionaryEntry>& dictionary,
                                  const std::vector<double>& idf,
                                  const std::map<std::string, double>& label_weights) {
  const std::vector<std::int32_t> ids = word_ids(corpus, dictionary);
  const std::vector<double> weight_of_label = weights_of(corpus.labels, label_weights);
  WeightedDocuments result;
  SparseRows& rows = result.rows;
  for (std::size_t document = 0; document != corpus.counts.rows(); ++document) {
    const std::vector<CountedWord> known = known_words(corpus.counts, document, ids);
    if (known.size() < 2) {
      continue;
    }
    for (const auto& [word_id, count] : known) {
      const double weight = static_cast<double>(count) * idf[static_cast<std::size_t>(word_id)];
      rows.column.push_back(word_id);
      rows.value.push_back(static_cast<float>(to_six_digits(weight)));
    }
    rows.row_begin.push_back(rows.column.size());
    result.weights.push_back(weight_of_label[static_cast<std::size_t>(corpus.label_of[document])]);
  }
  return result;
}

}  // namespace velmora::trainer
