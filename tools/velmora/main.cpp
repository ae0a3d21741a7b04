// velmora: tries out a dialogue at a prompt, explains its scores, checks and tests its rules.
//
// For whoever writes rules; see --help. One source file a command. Tested by
// tools/velmora/tests/.
#include <exception>
#include <new>

#include "command-line.hpp"
#include "commands.hpp"
#include "messages.hpp"
#include "standard-output.hpp"
#include "terminal.hpp"

namespace {

constexpr const char* kDescription =
    "Matches free user sentences against the rules of a dialogue, and helps to write the rules";

constexpr const char* kFooter =
    "velmora COMMAND --help tells more about a command, as does velmora-COMMAND(1).";

int run(int argc, char** argv) {
  CLI::App program(kDescription, "velmora");
  program.footer(kFooter);
  program.get_formatter()->column_width(28);
  program.set_version_flag("--version", "velmora " VELMORA_VERSION);
  program.require_subcommand(0, 1);
  Action action;
  add_commands(program, action);
  const std::optional<int> status = parse_command_line(program, argc, argv);
  if (!status && !action) {
    throw WrongUsage(
        "a command is required: match, explain, lint, test or serve (see velmora --help)");
  }
  const int result = status ? *status : action();
  flush_output();
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  prepare_standard_streams();
  use_utf8_locale();
  try {
    return run(argc, argv);
  } catch (const WrongUsage& wrong) {
    report_error(wrong.what());
    return 2;
  } catch (const std::bad_alloc&) {
    report_error("not enough memory");
  } catch (const std::exception& failure) {
    report_error(failure.what());
  }
  return 1;
}
