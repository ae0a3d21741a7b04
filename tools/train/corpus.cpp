#include "corpus.hpp"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "fingerprint.hpp"

namespace velmora::trainer {

namespace {

// Gives every different text a number, from 0 in order of appearance.
class Numbering {
 public:
  explicit Numbering(std::vector<std::string>& texts) : texts_(texts) {}

  std::int32_t operator()(const std::string& text) {
    const auto [entry, is_new] =
        numbers_.try_emplace(text, static_cast<std::int32_t>(texts_.size()));
    if (is_new) {
      texts_.push_back(text);
    }
    return entry->second;
  }

 private:
  std::vector<std::string>& texts_;
  std::unordered_map<std::string, std::int32_t> numbers_;
};

// Tells sequences of stems apart with near certainty.
std::uint64_t fingerprint_of(const std::vector<std::string>& stems) {
  Fingerprint fingerprint;
  for (const std::string& stem : stems) {
    fingerprint.add(stem.data(), stem.size());
  }
  return fingerprint.value();
}

void append_counts(std::vector<std::int32_t>& words, SparseRows& counts) {
  std::sort(words.begin(), words.end());
  for (auto word = words.begin(); word != words.end();) {
    const auto next = std::upper_bound(word, words.end(), *word);
    counts.column.push_back(*word);
    counts.value.push_back(static_cast<float>(next - word));
    word = next;
  }
  counts.row_begin.push_back(counts.column.size());
}

}  // namespace

Corpus read_corpus(const CorpusInput& input, const std::function<void(double bytes)>& report) {
  Corpus corpus;
  Numbering number_of_word(corpus.words);
  Numbering number_of_label(corpus.labels);
  std::unordered_set<std::uint64_t> known_documents;
  std::vector<std::int32_t> words;
  for_each_document(
      input,
      [&](const Document& document) {
        ++corpus.lines;
        const std::int32_t label = number_of_label(document.label);
        if (document.stems.empty() ||
            !known_documents.insert(fingerprint_of(document.stems)).second) {
          return;
        }
        words.clear();
        for (const std::string& stem : document.stems) {
          words.push_back(number_of_word(stem));
        }
        append_counts(words, corpus.counts);
        corpus.label_of.push_back(label);
      },
      report);
  return corpus;
}

}  // namespace velmora::trainer
