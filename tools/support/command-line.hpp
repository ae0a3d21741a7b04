// Parses a command line and says what is wrong with it: the option that is not known and the
// nearest one that is.
//
// Used by the programs beside the library; tested by tools/velmora/tests/velmora-test.cpp.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include <CLI/CLI.hpp>

/// What the user asked for makes no sense; the text says why. Ends a program with status 2.
struct WrongUsage : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A value means that the program is to end with it as its exit status: help or version was asked
/// for (0), or the usage is wrong (2, reported on standard error).
std::optional<int> parse_command_line(CLI::App& app, int argc, char** argv);

/// Accepts whole numbers from `least` on.
CLI::Validator whole_number_from(int least);

/// Accepts finite decimal numbers.
CLI::Validator finite_number();
