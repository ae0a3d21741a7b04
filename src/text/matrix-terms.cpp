#include "matrix-terms.hpp"

#include "../support/log-site.hpp"

namespace VX::Dialog::detail {

std::vector<std::pair<int, double>> matrix_terms(const std::map<int, double>& weights,
                                                 long vocabulary_size) {
  std::vector<std::pair<int, double>> terms;
  terms.reserve(weights.size());
  for (const auto& [word_id, weight] : weights) {
    if (word_id < 0 || word_id >= vocabulary_size) {
      // The text is the published one for every id that can't be laid into the matrix.
      VELMORA_LOG(query_log, zu::log::Level::error, "read_smat_data_OPTIM")
          << "The word index should be in ascending order";
      continue;
    }
    terms.emplace_back(word_id, weight);
  }
  return terms;
}

}  // namespace VX::Dialog::detail
