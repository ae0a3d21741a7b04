// A file that is written with every step checked.
//
// Used for stage files, checkpoints and the two word tables. A full disk is told with the file's
// name at the write or at the close where it shows. Tested by tests/program-test.cpp.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string_view>

namespace velmora::trainer {

class OutputFile {
 public:
  /// Creates or truncates. Throws Failure.
  explicit OutputFile(std::filesystem::path path);
  /// Closes without a check; call close for a file that is to be relied on.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Throws Failure.
  void write(std::string_view text);

  /// Brings everything to the disk and closes. Throws Failure.
  void close();

 private:
  std::filesystem::path path_;
  std::FILE* file_;
};

/// A file that appears under its name only when it is whole: written beside and renamed. What is no
/// regular file, a device or a pipe, is written as it stands.
class ReplacedFile {
 public:
  explicit ReplacedFile(std::filesystem::path path);
  /// Removes what was written, unless it was published.
  ~ReplacedFile();
  ReplacedFile(const ReplacedFile&) = delete;
  ReplacedFile& operator=(const ReplacedFile&) = delete;

  void write(std::string_view text) { file_.write(text); }
  void publish();

 private:
  std::filesystem::path path_;
  std::filesystem::path written_path_;
  OutputFile file_;
  bool published_ = false;
};

/// Brings a file or directory that others have written to the disk. Throws Failure.
void bring_to_disk(const std::filesystem::path& path);

}  // namespace velmora::trainer
