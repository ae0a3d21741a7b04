#include "word-overlap.hpp"

#include <algorithm>
#include <cmath>

#include "idf-table.hpp"

WordOverlap::WordOverlap(const velmora::Model& model) : model_(model), idf_(idf_table(model)) {
  for (const auto& [stem, idf] : idf_) {
    largest_idf_ = std::max(largest_idf_, idf);
  }
}

double WordOverlap::weight(const std::string& stem) const {
  const auto entry = idf_.find(stem);
  const double idf = entry == idf_.end() ? largest_idf_ : entry->second;
  return idf * idf;
}

double WordOverlap::of(const std::string& first, const std::string& second) const {
  const std::vector<std::string> first_stems = model_.stems(first);
  const std::vector<std::string> second_stems = model_.stems(second);
  double shared = 0.0;
  double first_square = 0.0;
  double second_square = 0.0;
  for (const std::string& stem : first_stems) {
    const double square = weight(stem) * weight(stem);
    first_square += square;
    if (std::binary_search(second_stems.begin(), second_stems.end(), stem)) {
      shared += square;
    }
  }
  for (const std::string& stem : second_stems) {
    second_square += weight(stem) * weight(stem);
  }
  return shared == 0.0 ? 0.0 : shared / std::sqrt(first_square * second_square);
}
