// The command line of velmora-console. Tested by tools/console/tests/console-test.cpp.
#pragma once

#include <optional>
#include <string>

struct ConsoleOptions {
  std::string language;
  /// Base directory of models; empty for the installed ones.
  std::string model;
  /// One of the two is set.
  std::string rules_path;
  std::string apps_path;
  /// Ids and ranges of ids; empty for all rules.
  std::string active;
  /// Name of a file in the model directory; empty for none.
  std::string snapshot;
  int top = 5;
  double threshold = 0.0;
  bool json = false;
  bool verbose = false;
};

/// Fills the options. A value means that the program is to end with it as its exit status: help or
/// version was asked for (0), or the usage is wrong (2, told on standard error).
std::optional<int> read_options(int argc, char** argv, ConsoleOptions& options);
