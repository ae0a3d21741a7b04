// What users hand to the programs: command lines, tables and lists of ids.
#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "command-line.hpp"
#include "commands.hpp"
#include "evaluate-options.hpp"
#include "id-list.hpp"
#include "options.hpp"
#include "support.hpp"
#include "table-file.hpp"

namespace fuzz {

namespace {

int parse_velmora(int argc, char** argv) {
  CLI::App program("", "velmora");
  program.require_subcommand(1);
  Action action;
  add_commands(program, action);
  return parse_command_line(program, argc, argv).value_or(0);
}

int parse_evaluate(int argc, char** argv) {
  EvaluateOptions options;
  try {
    return read_options(argc, argv, options).value_or(0);
  } catch (const WrongUsage&) {
    return 2;  // as the program ends
  }
}

int parse_train(int argc, char** argv) {
  return velmora::trainer::parse_options(argc, argv).exit_status.value_or(0);
}

}  // namespace

// An input holds one argument a line. Every program has to accept or refuse them.
void command_line(const std::string& input) {
  std::vector<std::string> arguments = lines_of(input);
  arguments.insert(arguments.begin(), "program");
  std::vector<char*> argv;
  for (std::string& argument : arguments) {
    std::replace(argument.begin(), argument.end(), '\0', ' ');
    argv.push_back(argument.data());
  }
  argv.push_back(nullptr);
  const int argc = static_cast<int>(arguments.size());
  for (const auto parse : {parse_velmora, parse_evaluate, parse_train}) {
    const int status = parse(argc, argv.data());
    require(status == 0 || status == 2, "a command line is accepted or refused");
  }
}

void table_file(const std::string& input) {
  const std::string path = folder().write("table", input);
  const Table table = read_table(path, {"id", "sentence"});
  require(!table.lines.empty() || !table.errors.empty(), "an empty table is an error");
  for (const TableLine& line : table.lines) {
    require(line.fields.size() == 2, "each line has its fields");
    require(!line.fields[0].empty() && !line.fields[1].empty(), "no field is empty");
  }
  for (const std::string& error : table.errors) {
    require(error.starts_with(path), "an error names its file");
  }
  std::map<std::string, std::vector<std::string>> applications;
  if (read_named_sentences(path, "application", applications)) {
    require(!applications.empty(), "a good table has sentences");
  }
}

// An input holds a list of ids, and below it the ids that there are.
void id_list(const std::string& input) {
  const std::size_t end = std::min(input.find('\n'), input.size());
  std::istringstream in(input.substr(end));
  std::set<int> ids;
  for (int id = 0; in >> id;) {
    ids.insert(id);
  }
  try {
    const std::set<int> picked = pick_ids(input.substr(0, end), ids);
    require(std::includes(ids.begin(), ids.end(), picked.begin(), picked.end()),
            "what is picked is there");
  } catch (const WrongUsage&) {
    // The list names no rule, or is not a list.
  }
}

}  // namespace fuzz
