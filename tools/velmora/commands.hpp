// The commands of velmora, one source file each.
//
// Tested by tools/velmora/tests/commands-test.cpp.
#pragma once

#include <functional>

#include <CLI/CLI.hpp>

/// What a command line asks for; gives the exit status. Throws WrongUsage, and std::exception when
/// it fails.
using Action = std::function<int()>;

/// Each adds its command to the program, and sets `action` when a command line names it.
void add_match_command(CLI::App& program, Action& action);
void add_explain_command(CLI::App& program, Action& action);
void add_lint_command(CLI::App& program, Action& action);
void add_test_command(CLI::App& program, Action& action);
void add_serve_command(CLI::App& program, Action& action);

/// All of them, in the order in which --help names them.
void add_commands(CLI::App& program, Action& action);
