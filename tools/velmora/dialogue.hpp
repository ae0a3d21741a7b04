// The dialogue that a command works on: a model and a file of rules.
//
// Tested by tools/velmora/tests/commands-test.cpp.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

#include <velmora/matcher.hpp>

struct DialogueOptions {
  std::string language = "enu";
  /// Folder of a model; empty for the installed one.
  std::string model;
  std::string rules;
};

/// Adds --language, --model and --rules to a command. Returns the last.
CLI::Option* add_dialogue_options(CLI::App& command, DialogueOptions& options);

/// Throws velmora::Error.
velmora::Model open_model(const DialogueOptions& options);

/// Reads the rules and builds a matcher, with a progress bar when it takes long. Throws
/// velmora::Error.
velmora::Matcher open_matcher(const DialogueOptions& options);
