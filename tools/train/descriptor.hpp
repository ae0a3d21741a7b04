// An open file or directory, and the lock on it.
//
// The lock lasts until the descriptor is closed, at the latest when the process ends, however it
// ends: what is not locked belongs to no living process. Used by output-directory.cpp,
// output-file.cpp and checkpoint-file.cpp. Tested by tools/train/tests/program-test.cpp.
#pragma once

#include <filesystem>
#include <utility>

namespace velmora::trainer {

class Descriptor {
 public:
  /// Takes over an open file, or -1 for none.
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor();
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  bool is_open() const { return number_ >= 0; }
  int number() const { return number_; }

  /// Locks the file. False when another process holds it, or the file system knows no locks: then
  /// errno is not EWOULDBLOCK.
  bool lock() const;

  /// True when this open file still has that name.
  bool is_at(const std::filesystem::path& path) const;

 private:
  int number_;
};

/// Opens for reading, without waiting for the other end of a pipe; not open, with errno set, when
/// that fails.
Descriptor open_file(const std::filesystem::path& path);
/// The same for a directory that is not behind a link.
Descriptor open_directory(const std::filesystem::path& path);

/// True for `<base>.<kind>-XXXXXX`, the form of every temporary name of the trainer.
bool is_temporary_name(const std::filesystem::path& path, const std::filesystem::path& base,
                       const char* kind);

}  // namespace velmora::trainer
