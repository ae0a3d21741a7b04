// A file that is written with every step checked.
//
// Used for files of stems, checkpoints and the two word tables. A full disk is reported with the
// file's name at the write or at the close where it shows. Tested by
// tools/train/tests/program-test.cpp.
#pragma once

#include <sys/stat.h>

#include <cstdio>
#include <filesystem>
#include <string_view>

namespace velmora::trainer {

class OutputFile {
 public:
  /// Creates or truncates. Throws Failure.
  explicit OutputFile(std::filesystem::path path);
  /// Creates a file of a new name, which is `pattern` with its last six characters replaced. Throws
  /// Failure.
  static OutputFile with_unique_name(const std::filesystem::path& pattern);
  /// Closes without a check; call close for a file that is to be relied on.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  const std::filesystem::path& path() const { return path_; }

  /// Throws Failure.
  void write(std::string_view text);

  /// Brings everything to the disk and closes. Throws Failure.
  void close();

 private:
  OutputFile(std::filesystem::path path, std::FILE* file);

  std::filesystem::path path_;
  std::FILE* file_;
};

/// A file that appears under its name only when it is whole: written as "<path>.partial-XXXXXX" and
/// renamed. What is not a regular file, a device or a pipe, is written as it stands.
class ReplacedFile {
 public:
  explicit ReplacedFile(std::filesystem::path path);
  /// Removes what was written, unless it was published.
  ~ReplacedFile();
  ReplacedFile(const ReplacedFile&) = delete;
  ReplacedFile& operator=(const ReplacedFile&) = delete;

  void write(std::string_view text) { file_.write(text); }
  /// Throws Failure.
  void publish();
  /// Where it stands until then.
  const std::filesystem::path& written_path() const { return file_.path(); }

 private:
  std::filesystem::path path_;
  OutputFile file_;
  bool published_ = false;
};

/// What is left of the permissions by the process's umask.
mode_t permitted_mode(mode_t mode);

/// Brings a file or directory that others have written to the disk. Throws Failure.
void bring_to_disk(const std::filesystem::path& path);

}  // namespace velmora::trainer
