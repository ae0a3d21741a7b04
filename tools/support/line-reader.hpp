// The lines of a text file, one at a time, for files of any size.
//
// Used by the programs for everything that a user writes: corpora, rules, evaluation data. Tested
// by tools/train/tests/corpus-test.cpp.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>

class LineReader {
 public:
  /// Throws std::runtime_error for what can't be opened or is a directory.
  explicit LineReader(std::filesystem::path path);

  /// Reads a line without its end, "\n" or "\r\n", and without a byte order mark at the start of
  /// the file. False at the end of the file. Throws std::runtime_error when reading fails.
  bool next(std::string& line);

  /// The number of the line that was read last, from 1.
  std::size_t line_number() const { return line_number_; }

 private:
  std::filesystem::path path_;
  std::ifstream in_;
  std::size_t line_number_ = 0;
};
