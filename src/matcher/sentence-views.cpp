#include "sentence-views.hpp"

#include <algorithm>
#include <cmath>
#include <set>

#include "../support/utf8.hpp"

namespace velmora::detail {

namespace {

// Lengths of the pieces that words are cut into. A Japanese character says as much as several
// letters.
struct PieceLengths {
  std::size_t shortest;
  std::size_t longest;
};

PieceLengths piece_lengths(const std::string& language) {
  return language == "jpj" ? PieceLengths{1, 3} : PieceLengths{2, 4};
}

void append_utf8(std::string& text, char32_t character) {
  const auto add = [&](char32_t bits) { text += static_cast<char>(bits); };
  if (character < 0x80) {
    add(character);
  } else if (character < 0x800) {
    add(0xC0U | (character >> 6U));
    add(0x80U | (character & 0x3FU));
  } else if (character < 0x10000) {
    add(0xE0U | (character >> 12U));
    add(0x80U | ((character >> 6U) & 0x3FU));
    add(0x80U | (character & 0x3FU));
  } else {
    add(0xF0U | (character >> 18U));
    add(0x80U | ((character >> 12U) & 0x3FU));
    add(0x80U | ((character >> 6U) & 0x3FU));
    add(0x80U | (character & 0x3FU));
  }
}

void scale_to_length_1(SparseVector& vector, double square) {
  const double length = std::sqrt(square);
  if (length > 0.0) {
    for (Feature& feature : vector) {
      feature.value /= length;
    }
  }
}

}  // namespace

double dot(const SparseVector& first, const SparseVector& second) {
  double sum = 0.0;
  auto other = second.begin();
  for (const Feature& feature : first) {
    while (other != second.end() && other->id < feature.id) {
      ++other;
    }
    if (other != second.end() && other->id == feature.id) {
      sum += feature.value * other->value;
    }
  }
  return sum;
}

Views::Views(const Model& model, const std::vector<std::vector<std::string>>& sentences)
    : model_(model) {
  std::vector<std::size_t> sentences_with;
  for (const std::vector<std::string>& stems : sentences) {
    std::set<int> met;
    for (const std::string& stem : stems) {
      if (!model_.knows(stem)) {
        new_words_.try_emplace(stem, static_cast<int>(word_count()));
      }
      for (const std::string& piece : pieces_of(stem)) {
        const int next = static_cast<int>(sentences_with.size());
        const auto [entry, is_new] = piece_ids_.try_emplace(piece, next);
        if (is_new) {
          sentences_with.push_back(0);
        }
        if (met.insert(entry->second).second) {
          ++sentences_with[static_cast<std::size_t>(entry->second)];
        }
      }
    }
  }
  const auto sentence_count = static_cast<double>(sentences.size());
  for (const std::size_t count : sentences_with) {
    piece_idf_.push_back(std::log((1.0 + sentence_count) / (1.0 + static_cast<double>(count))) +
                         1.0);
  }
}

int Views::word_id(const std::string& stem) const {
  const auto known = model().vocabulary.find(stem);
  if (known != model().vocabulary.end()) {
    return known->second;
  }
  const auto added = new_words_.find(stem);
  return added != new_words_.end() ? added->second : -1;
}

double Views::weight_of(int word_id) const {
  const bool has_idf = word_id >= 0 && static_cast<std::size_t>(word_id) < model().idf.size();
  return has_idf ? model().idf[static_cast<std::size_t>(word_id)] : model().rarest_idf;
}

SparseVector Views::words(const std::vector<std::string>& stems) const {
  SparseVector vector;
  double square = 0.0;
  for (const std::string& stem : stems) {
    const int id = word_id(stem);
    const double weight = weight_of(id);
    square += weight * weight;
    if (id >= 0) {
      vector.push_back({id, weight});
    }
  }
  std::sort(vector.begin(), vector.end(),
            [](const Feature& a, const Feature& b) { return a.id < b.id; });
  scale_to_length_1(vector, square);
  return vector;
}

SparseVector Views::characters(const std::vector<std::string>& stems) const {
  std::vector<int> ids;
  for (const std::string& stem : stems) {
    const std::vector<int> of_stem = piece_ids(stem);
    ids.insert(ids.end(), of_stem.begin(), of_stem.end());
  }
  std::sort(ids.begin(), ids.end());
  SparseVector vector;
  double square = 0.0;
  for (auto first = ids.begin(); first != ids.end();) {
    const auto last = std::upper_bound(first, ids.end(), *first);
    const double count = static_cast<double>(last - first);
    const double value = (1.0 + std::log(count)) * piece_idf_[static_cast<std::size_t>(*first)];
    square += value * value;
    vector.push_back({*first, value});
    first = last;
  }
  scale_to_length_1(vector, square);
  return vector;
}

std::vector<int> Views::piece_ids(const std::string& stem) const {
  std::vector<int> ids;
  for (const std::string& piece : pieces_of(stem)) {
    const auto entry = piece_ids_.find(piece);
    if (entry != piece_ids_.end()) {
      ids.push_back(entry->second);
    }
  }
  std::sort(ids.begin(), ids.end());
  return ids;
}

std::vector<SparseVector> Views::character_parts(const std::vector<std::string>& stems,
                                                 const SparseVector& whole) const {
  std::vector<SparseVector> parts;
  std::map<int, double> counts;
  for (const std::string& stem : stems) {
    SparseVector& part = parts.emplace_back();
    for (const int id : piece_ids(stem)) {
      counts[id] += 1.0;
      if (part.empty() || part.back().id != id) {
        part.push_back({id, 0.0});
      }
      part.back().value += 1.0;
    }
  }
  std::map<int, double> values;
  for (const Feature& feature : whole) {
    values[feature.id] = feature.value;
  }
  for (SparseVector& part : parts) {
    for (Feature& feature : part) {
      feature.value *= values[feature.id] / counts[feature.id];
    }
  }
  return parts;
}

std::vector<std::string> Views::pieces_of(const std::string& stem) const {
  const PieceLengths lengths = piece_lengths(model().language);
  const std::u32string padded = U" " + VX::Dialog::detail::characters_of(stem) + U" ";
  std::vector<std::string> pieces;
  for (std::size_t length = lengths.shortest; length <= lengths.longest; ++length) {
    for (std::size_t begin = 0; begin + length <= padded.size(); ++begin) {
      std::string piece;
      for (const char32_t character : padded.substr(begin, length)) {
        append_utf8(piece, character);
      }
      pieces.push_back(std::move(piece));
    }
  }
  return pieces;
}

}  // namespace velmora::detail
