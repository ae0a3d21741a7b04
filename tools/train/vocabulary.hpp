// Choosing the dictionary and the idf values, and the two word tables of a model directory.
//
// Used by training.cpp. Only everyday sources are counted: frequencies in definitions or manuals
// say little about what people type. Tested by tests/corpus-test.cpp.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

#include "corpus-reader.hpp"

namespace velmora::trainer {

/// In how many documents each word stands.
struct DocumentFrequencies {
  std::size_t documents = 0;
  std::unordered_map<std::string, std::size_t> of_word;
};

/// Counts a document; a word that stands in it twice counts once. No effect without words.
void count_document(const Document& document, DocumentFrequencies& frequencies);

struct DictionaryEntry {
  std::string word;
  std::size_t document_frequency = 0;
};

/// The `size` most frequent words of at least min_count documents, equally frequent ones in byte
/// order; sorted by bytes. The place of a word is its id.
std::vector<DictionaryEntry> choose_dictionary(const DocumentFrequencies& frequencies,
                                               std::size_t size, std::size_t min_count);

/// One word a line. Throws Failure.
void write_dictionary(const std::vector<DictionaryEntry>& dictionary,
                      const std::filesystem::path& path);

/// One line "id value" for each word: ln(documents / frequency), at least `floor`, six digits.
/// A value of 0 would make a word of a sentence vanish halfway, so floor must be above 0. Throws
/// Failure.
void write_idf(const std::vector<DictionaryEntry>& dictionary, std::size_t documents, double floor,
               const std::filesystem::path& path);

/// Word to id.
std::unordered_map<std::string, int> word_ids(const std::vector<DictionaryEntry>& dictionary);

}  // namespace velmora::trainer
