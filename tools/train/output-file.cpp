#include "output-file.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>
#include <utility>

#include "failure.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail_to_write(const fs::path& path, int error) {
  throw Failure("cannot write " + path.string() + ": " + std::strerror(error));
}

// Devices and pipes know no synchronisation.
bool synchronise(int descriptor) {
  return fsync(descriptor) == 0 || errno == EINVAL || errno == EROFS;
}

bool is_special(const fs::path& path) {
  const fs::file_status status = fs::status(path);
  return fs::exists(status) && !fs::is_regular_file(status);
}

}  // namespace

OutputFile::OutputFile(fs::path path) : path_(std::move(path)), file_(nullptr) {
  file_ = std::fopen(path_.c_str(), "wb");
  if (file_ == nullptr) {
    fail_to_write(path_, errno);
  }
}

OutputFile::OutputFile(fs::path path, std::FILE* file) : path_(std::move(path)), file_(file) {}

OutputFile OutputFile::with_unique_name(const fs::path& pattern) {
  std::string path = pattern.string();
  const int descriptor = mkostemp(path.data(), O_CLOEXEC);
  if (descriptor < 0) {
    fail_to_write(pattern, errno);
  }
  fchmod(descriptor, permitted_mode(0666));
  return {path, fdopen(descriptor, "wb")};
}

OutputFile::~OutputFile() {
  if (file_ != nullptr) {
    std::fclose(file_);
  }
}

void OutputFile::write(std::string_view text) {
  // An empty text may have no address, which fwrite must not get.
  if (!text.empty() && std::fwrite(text.data(), 1, text.size(), file_) != text.size()) {
    fail_to_write(path_, errno);
  }
}

void OutputFile::close() {
  const bool flushed = std::fflush(file_) == 0 && synchronise(fileno(file_));
  const int flush_error = errno;
  const bool closed = std::fclose(std::exchange(file_, nullptr)) == 0;
  if (!flushed || !closed) {
    fail_to_write(path_, flushed ? errno : flush_error);
  }
}

ReplacedFile::ReplacedFile(fs::path path)
    : path_(std::move(path)),
      file_(is_special(path_) ? OutputFile(path_)
                              : OutputFile::with_unique_name(path_.string() + ".partial-XXXXXX")) {}

ReplacedFile::~ReplacedFile() {
  if (!published_ && written_path() != path_) {
    std::error_code ignored;  // nothing left to do for a file that can't be removed
    fs::remove(written_path(), ignored);
  }
}

void ReplacedFile::publish() {
  file_.close();
  if (written_path() != path_) {
    std::error_code error;
    fs::rename(written_path(), path_, error);
    if (error) {
      throw Failure("cannot write " + path_.string() + ": " + error.message());
    }
  }
  published_ = true;
}

mode_t permitted_mode(mode_t mode) {
  const mode_t mask = umask(0);
  umask(mask);
  return mode & ~mask;
}

void bring_to_disk(const fs::path& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  const bool synchronised = descriptor >= 0 && synchronise(descriptor);
  const int error = errno;
  if (descriptor >= 0) {
    close(descriptor);
  }
  if (!synchronised) {
    fail_to_write(path, error);
  }
}

}  // namespace velmora::trainer
