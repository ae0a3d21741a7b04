// Starts a matcher from a snapshot; see warm-start.hpp.
#include "warm-start.hpp"

#include <chrono>
#include <filesystem>
#include <iostream>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

long milliseconds_since(Clock::time_point began) {
  return static_cast<long>(
      std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - began).count());
}

/// A snapshot does not tell which model made it; a model that is newer did not.
bool older_than_model(const fs::path& snapshot, const fs::path& directory) {
  std::error_code error;
  const auto made = fs::last_write_time(snapshot, error);
  for (const char* file : {"dictionary", "idf", "model", "model.conf"}) {
    const auto changed = fs::last_write_time(directory / file, error);
    if (!error && changed > made) {
      return true;
    }
  }
  return false;
}

/// Makes `name` a copy of what the library has just written, in one step, so that a start that
/// reads it meanwhile sees the old or the new file. False when the directory can't be written to.
bool keep(const fs::path& directory, const std::string& written, const std::string& name) {
  std::error_code error;
  if (!fs::is_regular_file(directory / written, error)) {
    return false;
  }
  if (written == name) {
    return true;
  }
  const fs::path temporary = directory / (name + ".new");
  fs::copy_file(directory / written, temporary, fs::copy_options::overwrite_existing, error);
  if (!error) {
    fs::rename(temporary, directory / name, error);
  }
  if (error) {
    fs::remove(temporary, error);
  }
  return !error;
}

}  // namespace

bool start_from_snapshot(VX::Dialog::Velmora& matcher,
                         const std::map<int, std::vector<std::string>>& rules,
                         const std::string& model_directory, const std::string& name) {
  const fs::path directory = model_directory;
  const fs::path snapshot = directory / name;
  std::error_code error;
  const bool there = fs::is_regular_file(snapshot, error);
  const bool stale = there && older_than_model(snapshot, directory);
  const bool warm = there && !stale;
  // The library does not report a failure to write. A leftover that can't be taken away, or nothing
  // in its place afterwards, tells of a directory that can't be written to.
  const std::string written = warm ? "index" : "newindex";
  bool writable = true;
  if (written != name || !warm) {
    fs::remove(directory / written, error);
    writable = !error;
  }

  std::string unused;
  const Clock::time_point began = Clock::now();
  const bool loaded = warm ? matcher.loadDialogVectorsFromFile(name, rules, unused, true)
                           : matcher.loadDialogVectors(unused, rules);
  if (!loaded) {
    std::cerr << "the rules could not be " << (warm ? "loaded" : "compiled") << "\n";
    return false;
  }
  const long duration = milliseconds_since(began);
  if (warm) {
    std::cerr << "warm start from " << snapshot.string();
  } else {
    std::cerr << (stale ? "snapshot older than the model, compiled anew"
                        : "no snapshot yet, compiled");
  }
  std::cerr << ": " << rules.size() << " rules in " << duration << " ms\n";

  if (!writable || !keep(directory, written, name)) {
    std::cerr << "snapshot " << name << " not saved: cannot write to " << model_directory << "\n";
  } else if (!warm) {
    std::cerr << "snapshot saved as " << snapshot.string() << "\n";
  }
  return true;
}
