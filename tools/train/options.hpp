// The command line of velmora-train.
//
// Used by main.cpp. Tested by tools/train/tests/program-test.cpp.
#pragma once

#include <filesystem>
#include <optional>

#include "training-settings.hpp"

namespace velmora::trainer {

struct Options {
  TrainingSettings training;
  /// Not empty: only stem the corpora, into this file.
  std::filesystem::path stems_only;
};

/// Reads the command line. An int means that the program is to end with that status: 0 after --help
/// and --version, 2 after a wrong command line, which is reported on standard error.
struct ParsedOptions {
  Options options;
  std::optional<int> exit_status;
};
ParsedOptions parse_options(int argc, char** argv);

}  // namespace velmora::trainer
