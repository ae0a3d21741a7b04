#include "kept-snapshot.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "../../src/support/model-files.hpp"
#include "elapsed-time.hpp"
#include "messages.hpp"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// The name under which the library is shown the snapshot in its own directory.
constexpr const char* kShownAs = "snapshot";

std::size_t word_count(const std::string& line) {
  const auto blanks = static_cast<std::size_t>(std::count(line.begin(), line.end(), ' '));
  return line.empty() ? 0 : blanks + 1;
}

/// A snapshot does not tell which model made it; a model that is newer did not.
bool older_than_model(const fs::path& snapshot) {
  std::error_code error;
  const auto made = fs::last_write_time(snapshot, error);
  for (const char* file : VX::Dialog::detail::kModelFiles) {
    const auto changed = fs::last_write_time(snapshot.parent_path() / file, error);
    if (!error && changed > made) {
      return true;
    }
  }
  return false;
}

bool same_content(const fs::path& first, const fs::path& second) {
  std::error_code error;
  if (fs::file_size(first, error) != fs::file_size(second, error) || error) {
    return false;
  }
  std::ifstream one(first, std::ios::binary);
  std::ifstream other(second, std::ios::binary);
  return std::equal(std::istreambuf_iterator<char>(one), {}, std::istreambuf_iterator<char>(other));
}

bool bring_to_disk(const fs::path& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  const bool written = descriptor >= 0 && fsync(descriptor) == 0;
  if (descriptor >= 0) {
    close(descriptor);
  }
  return written;
}

/// Puts a copy of `written` in the place of `path` in one step, so that a start that reads it
/// meanwhile, or a full disk, finds the old file or the new one. Returns why it could not.
std::string replace_file(const fs::path& written, const fs::path& path) {
  std::string temporary = path.string() + ".XXXXXX";
  const int descriptor = mkstemp(temporary.data());
  if (descriptor < 0) {
    return std::strerror(errno);
  }
  close(descriptor);
  std::error_code error;
  fs::copy_file(written, temporary, fs::copy_options::overwrite_existing, error);
  if (!error && !bring_to_disk(temporary)) {
    error = std::error_code(errno, std::generic_category());
  }
  if (!error) {
    fs::rename(temporary, path, error);
  }
  if (error) {
    std::error_code ignored;  // the failure that is reported is the first one
    fs::remove(temporary, ignored);
  }
  return error ? error.message() : "";
}

void keep_snapshot(const fs::path& written, std::size_t rule_count, const fs::path& path) {
  if (!is_whole_snapshot(written, rule_count)) {
    warn("snapshot not saved: there is no room to write it in " + written.parent_path().string());
    return;
  }
  if (same_content(written, path)) {
    return;
  }
  const std::string failure = replace_file(written, path);
  if (failure.empty()) {
    note("snapshot saved as " + path.string());
  } else {
    warn("snapshot not saved: cannot write " + path.string() + ": " + failure);
  }
}

void load_snapshot(VX::Dialog::Velmora& matcher,
                   const std::map<int, std::vector<std::string>>& rules) {
  const ElapsedTime elapsed("loading the snapshot");
  std::string unused;
  if (!matcher.loadDialogVectorsFromFile(kShownAs, rules, unused, true)) {
    throw std::runtime_error("the snapshot could not be loaded");
  }
}

}  // namespace

void compile_rules(VX::Dialog::Velmora& matcher,
                   const std::map<int, std::vector<std::string>>& rules) {
  const ElapsedTime elapsed("compiling the rules");
  std::string unused;
  if (!matcher.loadDialogVectors(unused, rules)) {
    throw std::runtime_error("the rules could not be compiled");
  }
}

bool is_whole_snapshot(const fs::path& path, std::size_t rule_count) {
  std::ifstream in(path, std::ios::binary);
  std::size_t rules = 0;
  std::size_t dimension = 0;
  std::string row;
  while (std::getline(in, row)) {
    std::string ids;
    std::string stems;
    std::string vector;
    if (!std::getline(in, ids) || !std::getline(in, stems) || !std::getline(in, vector)) {
      return false;
    }
    const bool ends_in_newline = !in.eof();
    dimension = rules == 0 ? word_count(vector) : dimension;
    if (!ends_in_newline || word_count(vector) != dimension || word_count(ids) == 0) {
      return false;
    }
    rules += word_count(ids);
  }
  return rules != 0 && (rule_count == 0 || rules == rule_count);
}

void start_from_snapshot(VX::Dialog::Velmora& matcher,
                         const std::map<int, std::vector<std::string>>& rules,
                         const PublishedModel& model, const fs::path& path) {
  std::error_code error;
  std::string why_cold;
  if (!fs::is_regular_file(path, error)) {
    why_cold = "no snapshot yet, compiled";
  } else if (older_than_model(path)) {
    why_cold = "snapshot older than the model, compiled anew";
  } else if (!is_whole_snapshot(path)) {
    why_cold = "snapshot damaged, compiled anew";
  }
  const bool warm = why_cold.empty();

  const Clock::time_point began = Clock::now();
  if (warm) {
    fs::create_symlink(fs::absolute(path), model.directory() / kShownAs);
  }
  if (warm) {
    load_snapshot(matcher, rules);
  } else {
    compile_rules(matcher, rules);
  }
  const std::chrono::duration<double, std::milli> duration = Clock::now() - began;
  note((warm ? "warm start from " + path.string() : why_cold) + ": " +
       std::to_string(rules.size()) + " rules in " +
       std::to_string(static_cast<long>(duration.count())) + " ms");
  keep_snapshot(model.directory() / (warm ? "index" : "newindex"), rules.size(), path);
}
