// Implementation of output-directory.hpp.
#include "output-directory.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <system_error>

#include "failure.hpp"
#include "output-file.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;

namespace {

// What a model directory holds: the model and the snapshots of rules compiled with it, which are of
// no use with another model.
constexpr std::array<std::string_view, 6> kModelFiles = {"dictionary", "idf",      "model",
                                                         "model.conf", "newindex", "index"};

[[noreturn]] void fail(const fs::path& directory, const std::string& reason) {
  throw Failure("cannot make model directory " + directory.string() + ": " + reason);
}

// Follows links, drops a slash at the end: a directory is renamed to this.
fs::path real_path(const fs::path& directory) {
  std::error_code error;
  fs::path path = fs::weakly_canonical(fs::absolute(directory), error);
  if (error) {
    fail(directory, error.message());
  }
  return path.has_filename() ? path : path.parent_path();
}

void check_place(const fs::path& directory, bool replace) {
  if (!fs::is_directory(directory.parent_path())) {
    fail(directory, directory.parent_path().string() + " is no directory");
  }
  if (!fs::exists(directory)) {
    return;
  }
  if (!fs::is_directory(directory)) {
    fail(directory, "a file of that name is there");
  }
  for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
    if (!replace) {
      fail(directory, "it is not empty (--force replaces a model)");
    }
    const std::string name = entry.path().filename().string();
    if (std::find(kModelFiles.begin(), kModelFiles.end(), name) == kModelFiles.end()) {
      fail(directory, "it holds \"" + name + "\", which belongs to no model; not replaced");
    }
  }
}

fs::path make_unique_directory(const fs::path& directory, const char* infix) {
  std::string path = directory.string() + infix + "XXXXXX";
  if (mkdtemp(path.data()) == nullptr) {
    fail(directory, std::strerror(errno));
  }
  return path;
}

}  // namespace

OutputDirectory::OutputDirectory(const fs::path& directory, bool replace)
    : directory_(real_path(directory)) {
  check_place(directory_, replace);
  partial_ = make_unique_directory(directory_, ".partial-");
}

OutputDirectory::~OutputDirectory() {
  if (!published_) {
    std::error_code ignored;  // nothing left to do for what can't be removed
    fs::remove_all(partial_, ignored);
  }
}

void OutputDirectory::publish() {
  for (const fs::directory_entry& entry : fs::directory_iterator(partial_)) {
    bring_to_disk(entry.path());
  }
  const mode_t mask = umask(0);
  umask(mask);
  chmod(partial_.c_str(), 0777 & ~mask);
  bring_to_disk(partial_);

  std::error_code error;
  fs::path replaced;
  if (fs::exists(directory_) && !fs::is_empty(directory_)) {
    replaced = make_unique_directory(directory_, ".replaced-");
    fs::rename(directory_, replaced, error);
  }
  if (!error) {
    fs::rename(partial_, directory_, error);
  }
  if (error) {
    if (!replaced.empty() && !fs::exists(directory_)) {
      std::error_code ignored;  // then the former model stays under its temporary name
      fs::rename(replaced, directory_, ignored);
    }
    fail(directory_, error.message());
  }
  published_ = true;
  bring_to_disk(directory_.parent_path());
  if (!replaced.empty()) {
    fs::remove_all(replaced, error);
  }
}

}  // namespace velmora::trainer
