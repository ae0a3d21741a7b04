// Implementation of output-file.hpp.
#include "output-file.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
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

fs::path path_to_write(const fs::path& path) {
  const fs::file_status status = fs::status(path);
  const bool is_special = fs::exists(status) && !fs::is_regular_file(status);
  return is_special ? path : fs::path(path.string() + ".partial");
}

}  // namespace

OutputFile::OutputFile(fs::path path) : path_(std::move(path)), file_(nullptr) {
  file_ = std::fopen(path_.c_str(), "wb");
  if (file_ == nullptr) {
    fail_to_write(path_, errno);
  }
}

OutputFile::~OutputFile() {
  if (file_ != nullptr) {
    std::fclose(file_);
  }
}

void OutputFile::write(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), file_) != text.size()) {
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
    : path_(std::move(path)), written_path_(path_to_write(path_)), file_(written_path_) {}

ReplacedFile::~ReplacedFile() {
  if (!published_ && written_path_ != path_) {
    std::error_code ignored;  // nothing left to do for a file that can't be removed
    fs::remove(written_path_, ignored);
  }
}

void ReplacedFile::publish() {
  file_.close();
  if (written_path_ != path_) {
    std::error_code error;
    fs::rename(written_path_, path_, error);
    if (error) {
      throw Failure("cannot write " + path_.string() + ": " + error.message());
    }
  }
  published_ = true;
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
