#include <velmora/tfidf.hpp>

#include "../support/log-site.hpp"
#include "../support/tables.hpp"

namespace VX::Dialog {

using detail::IdfTable;
using detail::SentenceWeights;
using detail::WeightTable;
using detail::WordIdTable;

void tfidf(const WordIdTable& word_ids, const IdfTable& idf, WeightTable& weights) {
  for (const auto& [sentence_id, ids] : word_ids) {
    SentenceWeights sentence_weights;
    for (const int word_id : ids) {
      sentence_weights[word_id] += 1.0;
    }
    for (auto& [word_id, weight] : sentence_weights) {
      const auto entry = idf.find(word_id);
      if (entry != idf.end()) {
        weight *= entry->second;
      } else {
        // The count stays as the weight: the word counts as if its idf were 1.
        VELMORA_LOG(detail::query_log, zu::log::Level::info, "tfidf")
            << word_id << " does not exist";
      }
    }
    weights[sentence_id] = std::move(sentence_weights);
  }
}

}  // namespace VX::Dialog
