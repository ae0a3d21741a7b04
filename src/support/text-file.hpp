// Whole text files and their lines and tokens.
//
// Used by every reader. Not installed. Tested by tests/text/text-tables-test.cpp and the tests of
// the other readers.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace VX::Dialog::detail {

/// The content of a file, or nothing when it can't be opened. What can be opened but not read, such
/// as a folder, is empty.
std::optional<std::string> read_text_file(const std::string& path);

/// The lines of a text, as std::getline gives them: without their newlines, and none after a
/// newline at the very end. The text must outlive the object and the lines.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  /// False, with an empty `line`, when there is none left.
  bool next(std::string_view& line);

 private:
  std::string_view rest_;
};

/// The first token of a line between white space; empty when there is none.
std::string_view first_token(std::string_view line);

/// All tokens of a line between white space.
std::vector<std::string> tokens_of(std::string_view line);

/// The words of a line of a text corpus: only the blank separates them.
std::vector<std::string> corpus_words(const std::string& line);

}  // namespace VX::Dialog::detail
