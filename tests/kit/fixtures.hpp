// What most tests need: a folder that goes away, the log as records, a model small enough to read.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <zu/log.hpp>

namespace test {

// The shapes that most tests name.
using Lines = std::vector<std::string>;
using Matches = std::vector<std::pair<double, std::vector<int>>>;
using Rules = std::map<int, std::vector<std::string>>;
using Vectors = std::vector<std::vector<double>>;

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

  /// "<level> <category> <function>: <text>" for each record, of one category when it is named.
  std::vector<std::string> lines(const std::string& category = "") const {
    std::vector<std::string> all;
    for (const zu::log::Record& record : records) {
      if (!category.empty() && record.category != category) {
        continue;
      }
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

/// Writes <folder>/<root>/model/ with four words in two dimensions. All sums over it are exact
/// enough to work out by hand: lambda and missing_weight are 0.5.
///
///   word    id   idf   factors
///   go       0     2   1 0
///   stop     1     1   0 1
///   up       2   0.5   1 1
///   walk     3   (none) -1 0.5
inline void write_model(const TemporaryFolder& folder, const std::string& root = kLanguage) {
  folder.write(root + "/model/dictionary", "go\nstop\nup\nwalk\n");
  folder.write(root + "/model/idf", "0 2\n1 1\n2 0.5\n");
  folder.write(root + "/model/model", "2\n0.5\n0.5\n");
  folder.write(root + "/model/model.conf", "4 2\n1 0 \n0 1 \n1 1 \n-1 0.5 \n");
}

/// Writes the model and selects it in an engine.
template <typename Engine>
void give_model(Engine& engine, const TemporaryFolder& folder) {
  write_model(folder);
  std::string base = folder.path();
  std::string language = kLanguage;
  engine.xSetModel(base, language);
}

/// Where a root for write_model is found as installed data, when XDG_DATA_HOME is <folder>/data.
inline const std::string kInstalledRoot = "data/dialog/velmora/data/" + kLanguage;

/// Makes <folder>/data the first place of installed data, and the only one that a test can fill.
inline void use_installed_data(const TemporaryFolder& folder) {
  setenv("XDG_DATA_HOME", folder.path("data").c_str(), 1);
  setenv("XDG_DATA_DIRS", folder.path("none").c_str(), 1);
}

/// Rules 0 to 30 for the model above with a fifth word, "turn": every set of the five words, each
/// with a score of its own.
inline Rules many_rules(const TemporaryFolder& folder, const std::string& root = kLanguage) {
  write_model(folder, root);
  folder.write(root + "/model/dictionary", "go\nstop\nup\nwalk\nturn\n");
  folder.write(root + "/model/model.conf", "5 2\n1 0 \n0 1 \n1 1 \n-1 0.5 \n0.3 -2 \n");
  const Lines words = {"go", "stop", "up", "walk", "turn"};
  Rules rules;
  for (unsigned set = 1; set != 1U << words.size(); ++set) {
    for (std::size_t i = 0; i != words.size(); ++i) {
      if ((set >> i) & 1U) {
        rules[static_cast<int>(set) - 1].push_back(words[i]);
      }
    }
  }
  return rules;
}

}  // namespace test
