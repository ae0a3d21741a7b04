// Implementation of vocabulary.hpp.
#include "vocabulary.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>

#include "output-file.hpp"

namespace velmora::trainer {

void count_document(const Document& document, DocumentFrequencies& frequencies) {
  frequencies.documents += document.stems.empty() ? 0 : 1;
  for (const std::string& word :
       std::set<std::string>(document.stems.begin(), document.stems.end())) {
    ++frequencies.of_word[word];
  }
}

std::vector<DictionaryEntry> choose_dictionary(const DocumentFrequencies& frequencies,
                                               std::size_t size, std::size_t min_count) {
  std::vector<DictionaryEntry> entries;
  for (const auto& [word, frequency] : frequencies.of_word) {
    if (frequency >= min_count) {
      entries.push_back({word, frequency});
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

void write_dictionary(const std::vector<DictionaryEntry>& dictionary,
                      const std::filesystem::path& path) {
  OutputFile file(path);
  for (const DictionaryEntry& entry : dictionary) {
    file.write(entry.word + '\n');
  }
  file.close();
}

void write_idf(const std::vector<DictionaryEntry>& dictionary, std::size_t documents, double floor,
               const std::filesystem::path& path) {
  OutputFile file(path);
  for (std::size_t word_id = 0; word_id != dictionary.size(); ++word_id) {
    const double frequency = static_cast<double>(dictionary[word_id].document_frequency);
    const double idf = std::max(std::log(static_cast<double>(documents) / frequency), floor);
    char line[64];
    const int length = std::snprintf(line, sizeof line, "%zu %.6g\n", word_id, idf);
    file.write({line, static_cast<std::size_t>(length)});
  }
  file.close();
}

std::unordered_map<std::string, int> word_ids(const std::vector<DictionaryEntry>& dictionary) {
  std::unordered_map<std::string, int> ids;
  for (const DictionaryEntry& entry : dictionary) {
    ids.emplace(entry.word, static_cast<int>(ids.size()));
  }
  return ids;
}

}  // namespace velmora::trainer
