// Choosing the dictionary and the idf values, and the two word tables of a model directory.
//
// Used by training.cpp. Only everyday sources are counted: frequencies in definitions or manuals
// say little about what people type. Tested by tools/train/tests/corpus-test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "corpus.hpp"

namespace velmora::trainer {

/// In how many documents each word stands.
struct DocumentFrequencies {
  std::size_t documents = 0;
  /// By number of the word in the corpus.
  std::vector<std::size_t> of_word;
};

/// Counts the documents whose label is in `everyday`, or all when it is empty.
DocumentFrequencies count_documents(const Corpus& corpus, const std::set<std::string>& everyday);

struct DictionaryEntry {
  std::string word;
  /// Its number in the corpus.
  std::int32_t corpus_word = 0;
  std::size_t document_frequency = 0;
};

/// The `size` most frequent words of at least min_count documents, equally frequent ones in byte
/// order; sorted by bytes. The place of a word is its id.
std::vector<DictionaryEntry> choose_dictionary(const Corpus& corpus,
                                               const DocumentFrequencies& frequencies,
                                               std::size_t size, std::size_t min_count);

/// For each word ln(documents / frequency), at least `floor`, to six significant digits, which is
/// what the file holds. A value of 0 would make a word of a sentence vanish halfway, so floor must
/// be above 0.
std::vector<double> idf_values(const std::vector<DictionaryEntry>& dictionary,
                               std::size_t documents, double floor);

/// One word a line. Throws Failure.
void write_dictionary(const std::vector<DictionaryEntry>& dictionary,
                      const std::filesystem::path& path);

/// One line "id value" for each word. Throws Failure.
void write_idf(const std::vector<double>& idf, const std::filesystem::path& path);

}  // namespace velmora::trainer
