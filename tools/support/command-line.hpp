// Parses a command line and says what is wrong with it: the option that is not known and the
// nearest one that is.
//
// Used by the programs beside the library; tested by tools/velmora/tests/commands-test.cpp.
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

/// Accepts 32-bit whole numbers from `least` on; other texts are "not <what>".
CLI::Validator whole_number(const std::string& what, int least);

/// Accepts the numbers from `least` to `most`.
CLI::Validator number_between(double least, double most);
