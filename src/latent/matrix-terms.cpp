#include "matrix-terms.hpp"

#include "../support/log-site.hpp"

namespace VX::Dialog::detail {

std::vector<std::pair<int, double>> matrix_terms(const SentenceWeights& weights,
                                                 long vocabulary_size) {
  std::vector<std::pair<int, double>> terms;
  terms.reserve(weights.size());
  int previous = -1;
  for (const auto& [word_id, weight] : weights) {
    const bool has_row = word_id >= 0 && word_id < vocabulary_size;
    // The published check and text: of several ids below 0 only the first breaks the order.
    if (word_id <= previous || word_id >= vocabulary_size) {
      VELMORA_LOG(query_log, zu::log::Level::error, "read_smat_data_OPTIM")
          << "The word index should be in ascending order";
    }
    if (has_row) {
      terms.emplace_back(word_id, weight);
    }
    previous = word_id;
  }
  return terms;
}

}  // namespace VX::Dialog::detail
