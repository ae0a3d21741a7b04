// Reads corpora, text or stems, and hands their documents on, stemmed and in order.
//
// A line is a document: `text`, or `label<TAB>text`, where the label names the source. In a corpus
// of stems the words of the text are stems already, separated by blanks. A byte order mark at the
// start of a file and a carriage return at the end of a line are dropped. Files that are not UTF-8
// text are refused.
//
// Used by corpus.cpp and training.cpp. Nothing but one batch of lines is held in memory. Tested by
// tools/train/tests/corpus-test.cpp.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace velmora::trainer {

struct CorpusInput {
  std::vector<std::filesystem::path> files;
  /// The files hold stems; then language is not used.
  bool stemmed = false;
  std::string language;
  /// The stems of each document are sorted and without repeats. So is a sentence that the library
  /// matches, and a model that is to fold in sentences learns best from documents of their kind.
  bool stem_sets = false;
  int threads = 1;
};

struct Document {
  /// Empty for a line without a label.
  std::string label;
  std::vector<std::string> stems;
};

/// Bytes of all files together, the unit of `report` below; 0 when one of them has no size.
double corpus_size(const CorpusInput& input);

/// Calls consume for each line of each file, in order and on the calling thread; report with the
/// bytes just read. Throws std::runtime_error for a file that can't be read, Failure with the line
/// for what is not UTF-8 text and for a stem with white space.
void for_each_document(const CorpusInput& input,
                       const std::function<void(const Document&)>& consume,
                       const std::function<void(double bytes)>& report);

/// "label<TAB>stem stem ...\n": the line of a corpus of stems.
std::string stem_line(const Document& document);

}  // namespace velmora::trainer
