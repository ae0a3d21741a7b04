#include "commands.hpp"

void add_commands(CLI::App& program, Action& action) {
  add_match_command(program, action);
  add_explain_command(program, action);
  add_lint_command(program, action);
  add_test_command(program, action);
  add_serve_command(program, action);
}
