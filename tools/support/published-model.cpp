#include "published-model.hpp"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "../../src/support/model-files.hpp"

namespace fs = std::filesystem;

namespace {

fs::path make_temporary_directory() {
  std::string pattern = (fs::temp_directory_path() / "velmora-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw fs::filesystem_error("cannot make a temporary directory", pattern,
                               std::error_code(errno, std::generic_category()));
  }
  return pattern;
}

}  // namespace

PublishedModel::PublishedModel(const fs::path& directory, const std::string& language,
                               bool keep_snapshots)
    : base_(make_temporary_directory()), directory_(base_ / language / "model") {
  fs::create_directories(directory_);
  for (const char* file : VX::Dialog::detail::kModelFiles) {
    fs::create_symlink(fs::absolute(directory) / file, directory_ / file);
  }
  if (!keep_snapshots) {
    for (const char* snapshot :
         {VX::Dialog::detail::kCompiledSnapshot, VX::Dialog::detail::kMergedSnapshot}) {
      fs::create_symlink("/dev/null", directory_ / snapshot);
    }
  }
}

PublishedModel::~PublishedModel() {
  std::error_code ignored;  // a temporary directory that stays is no failure of the program
  fs::remove_all(base_, ignored);
}
