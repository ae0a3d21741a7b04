// The command line of velmora-train.
//
// Used by main.cpp. Tested by tests/program-test.cpp.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "corpus-reader.hpp"
#include "factorisation.hpp"
#include "model-writer.hpp"
#include "refinement.hpp"

namespace velmora::trainer {

struct Options {
  CorpusInput corpus;
  std::filesystem::path output;
  bool force = false;
  /// Not empty: only stem the corpora, into this file.
  std::filesystem::path stems_only;

  std::map<std::string, double> label_weights;
  /// Sources that the dictionary and the idf come from; all when empty.
  std::set<std::string> everyday;
  std::size_t vocabulary = 10000;
  std::size_t min_count = 2;
  double idf_floor = 0.05;

  FactorisationSettings factorisation;
  int sweeps = 3;
  std::uint64_t random_start = 1;
  RefinementSettings refinement;
  ModelSettings model;

  std::filesystem::path checkpoint;
  bool resume = false;
  /// Empty: stage files are removed.
  std::filesystem::path keep_work;
  bool quiet = false;
};

/// Reads the command line. An int means that the program is to end with that status: 0 after --help
/// and --version, 2 after a wrong command line, of which standard error tells.
struct ParsedOptions {
  Options options;
  std::optional<int> exit_status;
};
ParsedOptions parse_options(int argc, char** argv);

}  // namespace velmora::trainer
