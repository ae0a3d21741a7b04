#include "line-reader.hpp"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

[[noreturn]] void fail(const std::filesystem::path& path, int error) {
  throw std::runtime_error("cannot read " + path.string() + ": " + std::strerror(error));
}

}  // namespace

LineReader::LineReader(std::filesystem::path path)
    : path_(std::move(path)), in_(path_, std::ios::binary) {
  if (!in_) {
    fail(path_, errno);
  }
  std::error_code ignored;  // what is open is there
  if (std::filesystem::is_directory(path_, ignored)) {
    fail(path_, EISDIR);
  }
}

bool LineReader::next(std::string& line) {
  if (!std::getline(in_, line)) {
    if (in_.bad()) {
      fail(path_, EIO);
    }
    return false;
  }
  ++line_number_;
  if (line_number_ == 1 && line.starts_with(kByteOrderMark)) {
    line.erase(0, kByteOrderMark.size());
  }
  if (line.ends_with('\r')) {
    line.pop_back();
  }
  return true;
}
