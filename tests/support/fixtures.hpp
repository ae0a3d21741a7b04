// What most tests need: a folder that goes away, the log as records, a model small enough to read.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>
#include <zu/log.hpp>

namespace test {

/// A folder of its own for one test.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "velmora-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string path(const std::string& name = "") const {
    return name.empty() ? path_ : path_ + "/" + name;
  }
  /// Writes a file, with its folders, and returns its path.
  std::string write(const std::string& name, const std::string& text) const {
    std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
    std::ofstream(path(name), std::ios::binary) << text;
    return path(name);
  }
  std::string read(const std::string& name) const {
    std::ifstream in(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

 private:
  std::string path_;
};

/// The visible log records of its life time; the console is quiet meanwhile.
class LogCapture {
 public:
  LogCapture() : id_(zu::log::addHandler([this](const auto& r) { records.push_back(r); })) {
    zu::log::setConsole(false);
  }
  ~LogCapture() { zu::log::removeHandler(id_); }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  /// "<level> <category> <function>: <text>" for each record.
  std::vector<std::string> lines() const {
    std::vector<std::string> all;
    for (const zu::log::Record& record : records) {
      all.push_back(std::to_string(static_cast<int>(record.level)) + " " + record.category + " " +
                    record.function + ": " + record.text);
    }
    return all;
  }

  std::vector<zu::log::Record> records;

 private:
  int id_;
};

/// A language without a stemmer: words come through as they are.
inline const std::string kLanguage = "tst";

/// Writes <folder>/tst/model/ with four words in two dimensions. All sums over it are exact enough
/// to work out by hand: lambda and missing_weight are 0.5.
///
///   word    id   idf   factors
///   go       0     2   1 0
///   stop     1     1   0 1
///   up       2   0.5   1 1
///   walk     3   (none) -1 0.5
inline void write_model(const TemporaryFolder& folder) {
  folder.write("tst/model/dictionary", "go\nstop\nup\nwalk\n");
  folder.write("tst/model/idf", "0 2\n1 1\n2 0.5\n");
  folder.write("tst/model/model", "2\n0.5\n0.5\n");
  folder.write("tst/model/model.conf", "4 2\n1 0 \n0 1 \n1 1 \n-1 0.5 \n");
}

}  // namespace test
