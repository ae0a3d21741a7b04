// The command line of velmora-evaluate. Tested by tools/evaluate/tests/evaluate-test.cpp.
#pragma once

#include <optional>
#include <string>
#include <vector>

struct EvaluateOptions {
  std::string language;
  /// Folder of a model; empty for the installed one.
  std::string model;
  /// Training and test file; empty when intents are not asked for.
  std::vector<std::string> intents;
  /// Training sentences a rule; 0 joins all of a label.
  int sentences_per_rule = 0;
  std::string out_of_scope;
  std::string pairs;
  bool matcher = false;
  bool baseline = false;
  bool json = false;
};

/// Fills the options. A value means that the program is to end with it as its exit status: help or
/// version was asked for (0), or the usage is wrong (2, reported on standard error). Throws
/// WrongUsage when there is nothing to measure.
std::optional<int> read_options(int argc, char** argv, EvaluateOptions& options);
