#include "vocabulary.hpp"

#include <algorithm>
#include <cmath>

#include "output-file.hpp"
#include "six-digits.hpp"

namespace velmora::trainer {

DocumentFrequencies count_documents(const Corpus& corpus, const std::set<std::string>& everyday) {
  DocumentFrequencies frequencies;
  frequencies.of_word.resize(corpus.words.size());
  for (std::size_t document = 0; document != corpus.counts.rows(); ++document) {
    const std::string& label = corpus.labels[static_cast<std::size_t>(corpus.label_of[document])];
    if (!everyday.empty() && !everyday.contains(label)) {
      continue;
    }
    ++frequencies.documents;
    for (const std::int32_t word : corpus.counts.row_columns(document)) {
      ++frequencies.of_word[static_cast<std::size_t>(word)];
    }
  }
  return frequencies;
}

std::vector<DictionaryEntry> choose_dictionary(const Corpus& corpus,
                                               const DocumentFrequencies& frequencies,
                                               std::size_t size, std::size_t min_count) {
  std::vector<DictionaryEntry> entries;
  for (std::size_t word = 0; word != corpus.words.size(); ++word) {
    const std::size_t frequency = frequencies.of_word[word];
    if (frequency >= min_count) {
      entries.push_back({corpus.words[word], static_cast<std::int32_t>(word), frequency});
    }
  }
  std::sort(entries.begin(), entries.end(), [](const auto& first, const auto& second) {
    return first.document_frequency != second.document_frequency
               ? first.document_frequency > second.document_frequency
               : first.word < second.word;
  });
  entries.resize(std::min(size, entries.size()));
  std::sort(entries.begin(), entries.end(),
            [](const auto& first, const auto& second) { return first.word < second.word; });
  return entries;
}

std::vector<double> idf_values(const std::vector<DictionaryEntry>& dictionary,
                               std::size_t documents, double floor) {
  std::vector<double> values;
  values.reserve(dictionary.size());
  for (const DictionaryEntry& entry : dictionary) {
    const double frequency = static_cast<double>(entry.document_frequency);
    const double idf = std::log(static_cast<double>(documents) / frequency);
    values.push_back(to_six_digits(std::max(idf, floor)));
  }
  return values;
}

void write_dictionary(const std::vector<DictionaryEntry>& dictionary,
                      const std::filesystem::path& path) {
  OutputFile file(path);
  for (const DictionaryEntry& entry : dictionary) {
    file.write(entry.word + '\n');
  }
  file.close();
}

void write_idf(const std::vector<double>& idf, const std::filesystem::path& path) {
  OutputFile file(path);
  for (std::size_t word_id = 0; word_id != idf.size(); ++word_id) {
    file.write(std::to_string(word_id) + ' ' + six_digit_text(idf[word_id]) + '\n');
  }
  file.close();
}

}  // namespace velmora::trainer
