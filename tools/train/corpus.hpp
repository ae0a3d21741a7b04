// The corpora in memory: which words stand in which document, and how often.
//
// Words and labels are numbered as they come; text is not held. Used by training.cpp,
// vocabulary.cpp and weighting.cpp. Tested by tools/train/tests/corpus-test.cpp.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "corpus-reader.hpp"
#include "sparse-rows.hpp"

namespace velmora::trainer {

struct Corpus {
  /// Every word, by number.
  std::vector<std::string> words;
  /// Documents by words: how often each word stands in each document. No row is empty.
  SparseRows counts;
  /// Every label that a line has, by number.
  std::vector<std::string> labels;
  /// The number of each document's label.
  std::vector<std::int32_t> label_of;
  /// Lines of the files, among them empty and repeated documents, which have no row.
  std::size_t lines = 0;
};

/// Reads all files. A document is the same as another when its stems are, whatever its label: only
/// the first one counts. Calls report with the bytes just read. Throws what for_each_document
/// throws.
Corpus read_corpus(const CorpusInput& input, const std::function<void(double bytes)>& report);

}  // namespace velmora::trainer
