#include "descriptor.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

namespace velmora::trainer {

namespace fs = std::filesystem;

Descriptor::~Descriptor() {
  if (is_open()) {
    close(number_);
  }
}

bool Descriptor::lock() const {
  return flock(number_, LOCK_EX | LOCK_NB) == 0;
}

bool Descriptor::is_at(const fs::path& path) const {
  struct stat opened = {};
  struct stat named = {};
  return fstat(number_, &opened) == 0 && stat(path.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

Descriptor open_file(const fs::path& path) {
  return Descriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
}

Descriptor open_directory(const fs::path& path) {
  return Descriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

bool is_temporary_name(const fs::path& path, const fs::path& base, const char* kind) {
  constexpr std::size_t kRandomCharacters = 6;
  const std::string name = path.filename().string();
  const std::string prefix = base.filename().string() + "." + kind + "-";
  return name.size() == prefix.size() + kRandomCharacters && name.starts_with(prefix);
}

}  // namespace velmora::trainer
