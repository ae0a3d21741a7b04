#include "output-directory.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>
#include <vector>

#include "../../src/support/model-files.hpp"
#include "failure.hpp"
#include "output-file.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;

namespace {

// An empty file that tells a directory of the trainer from a user's of the same name.
constexpr const char* kMark = ".velmora-train";

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

// Files of a model, snapshots of rules compiled with it, which are of no use with another model,
// and the mark.
std::vector<std::string> names_of_files() {
  using namespace VX::Dialog::detail;
  std::vector<std::string> names = {kCompiledSnapshot, kMergedSnapshot, kMark};
  names.insert(names.end(), std::begin(kModelFiles), std::end(kModelFiles));
  return names;
}

// The name of something in the directory that the trainer did not make; empty when there is none.
std::string find_foreign_entry(const fs::path& directory) {
  const std::vector<std::string> known = names_of_files();
  for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
    std::string name = entry.path().filename().string();
    const bool is_known = std::find(known.begin(), known.end(), name) != known.end();
    if (!is_known || !fs::is_regular_file(entry.symlink_status())) {
      return name;
    }
  }
  return {};
}

// Throws Failure unless a model may be put there.
void check_place(const fs::path& directory, bool replace) {
  const fs::file_status status = fs::symlink_status(directory);
  if (!fs::exists(status)) {
    return;
  }
  if (!fs::is_directory(status)) {
    fail(directory, "a file of that name is there");
  }
  if (!replace && !fs::is_empty(directory)) {
    fail(directory, "it is not empty (--force replaces a model)");
  }
  if (const std::string name = find_foreign_entry(directory); !name.empty()) {
    fail(directory, "it holds \"" + name + "\", which belongs to no model; not replaced");
  }
}

fs::path make_unique_directory(const fs::path& directory, const char* kind) {
  std::string path = directory.string() + "." + kind + "-XXXXXX";
  if (mkdtemp(path.data()) == nullptr) {
    fail(directory, std::strerror(errno));
  }
  return path;
}

void make_mark(const fs::path& directory) {
  const std::string path = directory / kMark;
  const Descriptor mark(open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666));
  if (!mark.is_open()) {
    fail(directory, std::strerror(errno));
  }
}

// Removes the files of a model and their directory, which stays when it holds anything else.
void remove_model(const fs::path& directory) {
  std::error_code ignored;  // nothing left to do for what can't be removed
  for (const std::string& name : names_of_files()) {
    if (name != kMark) {
      fs::remove(directory / name, ignored);
    }
  }
  fs::remove(directory / kMark, ignored);  // last: the next run goes on where this one is killed
  fs::remove(directory, ignored);
}

bool is_leftover(const fs::path& path, const fs::path& directory) {
  // A former model is the only one as long as no other stands in its place.
  return is_temporary_name(path, directory, "partial") ||
         (is_temporary_name(path, directory, "replaced") && fs::exists(directory));
}

// Removes what killed runs to the same place have left.
void remove_leftovers(const fs::path& directory) {
  std::vector<fs::path> leftovers;
  for (const fs::directory_entry& entry : fs::directory_iterator(directory.parent_path())) {
    if (is_leftover(entry.path(), directory)) {
      leftovers.push_back(entry.path());
    }
  }
  for (const fs::path& leftover : leftovers) {
    std::error_code ignored;  // what another run has just removed has no mark
    if (!fs::exists(leftover / kMark, ignored)) {
      continue;  // not ours, or of a run that has not locked it yet
    }
    const Descriptor opened = open_directory(leftover);
    if (opened.is_open() && opened.lock() && find_foreign_entry(leftover).empty()) {
      remove_model(leftover);
    }
  }
}

}  // namespace

OutputDirectory::OutputDirectory(const fs::path& directory, bool replace)
    : directory_(real_path(directory)), replace_(replace) {
  std::error_code error;
  fs::create_directories(directory_.parent_path(), error);
  if (error) {
    fail(directory_, error.message());
  }
  try {
    check_place(directory_, replace_);
    remove_leftovers(directory_);
  } catch (const fs::filesystem_error& failure) {
    fail(directory_, failure.code().message());
  }
  partial_ = make_unique_directory(directory_, "partial");
  lock_ = open_directory(partial_);
  // On a file system without locks leftovers are not locked either, and stay.
  (void)lock_.lock();
  make_mark(partial_);
}

OutputDirectory::~OutputDirectory() {
  if (!published_) {
    remove_model(partial_);
  }
}

void OutputDirectory::publish() {
  for (const fs::directory_entry& entry : fs::directory_iterator(partial_)) {
    bring_to_disk(entry.path());
  }
  chmod(partial_.c_str(), permitted_mode(0777));
  bring_to_disk(partial_);

  // This never replaces a directory that holds something, so it is also the check that nothing has
  // appeared there during the training.
  if (std::rename(partial_.c_str(), directory_.c_str()) == 0) {
    published_ = true;
  } else if (errno == ENOTEMPTY || errno == EEXIST) {
    replace_model();
  } else {
    fail(directory_, std::strerror(errno));
  }
  std::error_code ignored;  // a mark that stays does no harm
  fs::remove(directory_ / kMark, ignored);
  bring_to_disk(directory_.parent_path());
}

void OutputDirectory::replace_model() {
  check_place(directory_, replace_);
  const Descriptor former = open_directory(directory_);
  (void)former.lock();  // so that no other run takes it for a leftover under its temporary name
  make_mark(directory_);
  const auto exchange = [&] {
    return renameat2(AT_FDCWD, partial_.c_str(), AT_FDCWD, directory_.c_str(), RENAME_EXCHANGE) ==
           0;
  };
  const auto give_up = [&](const std::string& reason) {
    std::error_code ignored;  // a mark that stays does no harm
    fs::remove(directory_ / kMark, ignored);
    fail(directory_, reason);
  };
  if (exchange()) {
    published_ = true;
    if (const std::string name = find_foreign_entry(partial_); !name.empty()) {
      published_ = !exchange();
      give_up("\"" + name + "\" has appeared there, which belongs to no model");
    }
    remove_model(partial_);
  } else if (errno == EINVAL || errno == ENOSYS) {
    replace_in_two_steps();
  } else {
    give_up(std::strerror(errno));
  }
}

void OutputDirectory::replace_in_two_steps() {
  const fs::path replaced = make_unique_directory(directory_, "replaced");
  fs::rename(directory_, replaced);
  std::error_code error;
  fs::rename(partial_, directory_, error);
  if (error) {
    std::error_code ignored;  // then the former model stays under its temporary name
    fs::rename(replaced, directory_, ignored);
    fail(directory_, error.message());
  }
  published_ = true;
  remove_model(replaced);
}

}  // namespace velmora::trainer
