#include "sentence-views.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

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

bool continues_character(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// Calls `use` with each piece of a word, a blank at either end. Words come from the stemmer, so
// they are well-formed UTF-8.
template <typename Use>
void for_each_piece(const std::string& word, PieceLengths lengths, const Use& use) {
  const std::string padded = " " + word + " ";
  std::vector<std::size_t> starts;
  for (std::size_t byte = 0; byte != padded.size(); ++byte) {
    if (!continues_character(padded[byte])) {
      starts.push_back(byte);
    }
  }
  starts.push_back(padded.size());
  const std::size_t character_count = starts.size() - 1;
  for (std::size_t length = lengths.shortest; length <= lengths.longest; ++length) {
    for (std::size_t c = 0; c + length <= character_count; ++c) {
      use(padded.substr(starts[c], starts[c + length] - starts[c]));
    }
  }
}

void add_feature(int id, double value, SparseVector& vector, double& square) {
  vector.push_back({id, static_cast<float>(value)});
  square += value * value;
}

void scale_to_length_1(SparseVector& vector, double square) {
  const double length = std::sqrt(square);
  if (length > 0.0) {
    for (Feature& feature : vector) {
      feature.value = static_cast<float>(static_cast<double>(feature.value) / length);
    }
  }
}

}  // namespace

double log_of(double value) {
  return static_cast<double>(static_cast<float>(std::log(value)));
}

double dot(const SparseVector& first, const SparseVector& second) {
  double sum = 0.0;
  auto other = second.begin();
  for (const Feature& feature : first) {
    while (other != second.end() && other->id < feature.id) {
      ++other;
    }
    if (other != second.end() && other->id == feature.id) {
      sum += static_cast<double>(feature.value) * static_cast<double>(other->value);
    }
  }
  return sum;
}

Views::Views(const Model& model, const std::vector<SentenceText>& sentences) : model_(model) {
  const PieceLengths lengths = piece_lengths(model.language());
  std::vector<std::size_t> sentences_with;
  std::vector<std::size_t> last_sentence_with;  // counted from 1
  for (std::size_t j = 0; j != sentences.size(); ++j) {
    for (const std::string& stem : sentences[j].stems) {
      if (!model_.knows(stem)) {
        new_words_.try_emplace(stem, static_cast<int>(word_count()));
      }
    }
    for (const std::string& word : sentences[j].words) {
      for_each_piece(word, lengths, [&](std::string&& piece) {
        const std::size_t next = sentences_with.size();
        const auto [entry, is_new] =
            piece_ids_.try_emplace(std::move(piece), static_cast<int>(next));
        if (is_new) {
          sentences_with.push_back(0);
          last_sentence_with.push_back(0);
        }
        const auto id = static_cast<std::size_t>(entry->second);
        if (last_sentence_with[id] != j + 1) {
          last_sentence_with[id] = j + 1;
          ++sentences_with[id];
        }
      });
    }
  }
  const auto sentence_count = static_cast<double>(sentences.size());
  for (const std::size_t count : sentences_with) {
    piece_idf_.push_back(1.0 + log_of((1.0 + sentence_count) / (1.0 + static_cast<double>(count))));
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
    if (id >= 0) {
      add_feature(id, weight, vector, square);
    } else {
      square += weight * weight;
    }
  }
  std::sort(vector.begin(), vector.end(),
            [](const Feature& a, const Feature& b) { return a.id < b.id; });
  scale_to_length_1(vector, square);
  return vector;
}

double Views::unknown_share(const std::vector<std::string>& stems) const {
  double all = 0.0;
  double unknown = 0.0;
  for (const std::string& stem : stems) {
    const double weight = weight_of(word_id(stem));
    all += weight * weight;
    unknown += model_.knows(stem) ? 0.0 : weight * weight;
  }
  return all > 0.0 ? unknown / all : 1.0;
}

SparseVector Views::characters(const std::vector<std::string>& words) const {
  std::vector<int> ids;
  for (const std::string& word : words) {
    add_piece_ids(word, ids);
  }
  std::sort(ids.begin(), ids.end());
  SparseVector vector;
  double square = 0.0;
  for (auto first = ids.begin(); first != ids.end();) {
    const auto last = std::upper_bound(first, ids.end(), *first);
    const double idf = piece_idf_[static_cast<std::size_t>(*first)];
    const double count = static_cast<double>(last - first);
    add_feature(*first, (1.0 + log_of(count)) * idf, vector, square);
    first = last;
  }
  scale_to_length_1(vector, square);
  return vector;
}

std::vector<std::map<int, double>> Views::character_parts(const std::vector<std::string>& words,
                                                          const SparseVector& whole) const {
  std::vector<std::map<int, double>> parts;
  parts.reserve(words.size());
  std::map<int, double> counts;
  for (const std::string& word : words) {
    std::map<int, double> part;
    std::vector<int> ids;
    add_piece_ids(word, ids);
    for (const int id : ids) {
      part[id] += 1.0;
      counts[id] += 1.0;
    }
    parts.push_back(std::move(part));
  }
  for (const Feature& feature : whole) {
    for (std::map<int, double>& part : parts) {
      const auto entry = part.find(feature.id);
      if (entry != part.end()) {
        entry->second *= static_cast<double>(feature.value) / counts[feature.id];
      }
    }
  }
  return parts;
}

void Views::add_piece_ids(const std::string& word, std::vector<int>& ids) const {
  for_each_piece(word, piece_lengths(model().language), [&](const std::string& piece) {
    const auto entry = piece_ids_.find(piece);
    if (entry != piece_ids_.end()) {
      ids.push_back(entry->second);
    }
  });
}

}  // namespace velmora::detail
