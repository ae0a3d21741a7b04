#include "command-line.hpp"

#include <algorithm>
#include <charconv>
#include <iostream>
#include <numeric>
#include <vector>

namespace {

/// Edits (one character put in, taken out or replaced) that turn one word into the other.
std::size_t edit_distance(const std::string& from, const std::string& to) {
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= from.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= to.size(); ++j) {
      const std::size_t replaced = diagonal + (from[i - 1] == to[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
    }
  }
  return row.back();
}

/// "; did you mean 'x'?" for the nearest of the known words, or nothing when none is near.
std::string suggestion(const std::string& word, const std::vector<std::string>& known) {
  std::size_t least = std::max<std::size_t>(word.size() / 2, 2) + 1;
  std::string nearest;
  for (const std::string& candidate : known) {
    const std::size_t distance = edit_distance(word, candidate);
    if (distance < least) {
      least = distance;
      nearest = candidate;
    }
  }
  return nearest.empty() ? "" : "; did you mean '" + nearest + "'?";
}

std::vector<std::string> long_options(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) {
      names.push_back("--" + name);
    }
  }
  return names;
}

std::vector<std::string> command_names(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands({})) {
    names.push_back(command->get_name());
  }
  return names;
}

bool holds(const std::vector<std::string>& words, const std::string& word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

struct Complaint {
  /// What the user is to ask for help, for example "velmora match".
  std::string program;
  /// The unknown option or command; empty when all are known.
  std::string text;
};

/// A mistyped option must be named even when the parser stumbles over its consequences first, such
/// as a required option that is then missing.
Complaint find_unknown(const CLI::App& app, int argc, char** argv) {
  Complaint complaint{app.get_name(), ""};
  const CLI::App* current = &app;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--") {
      break;
    }
    const std::vector<std::string> commands = command_names(*current);
    if (argument.rfind("--", 0) == 0) {
      const std::string name = argument.substr(0, argument.find('='));
      const std::vector<std::string> known = long_options(*current);
      if (!holds(known, name)) {
        complaint.text = "unknown option '" + name + "'" + suggestion(name, known);
        break;
      }
    } else if (!commands.empty() && !argument.starts_with('-')) {
      if (!holds(commands, argument)) {
        complaint.text = "unknown command '" + argument + "'" + suggestion(argument, commands);
        break;
      }
      current = current->get_subcommand(argument);
      complaint.program += " " + argument;
    }
  }
  return complaint;
}

}  // namespace

std::optional<int> parse_command_line(CLI::App& app, int argc, char** argv) {
  try {
    app.parse(argc, argv);
    return std::nullopt;
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      return app.exit(error);
    }
    const Complaint complaint = find_unknown(app, argc, argv);
    std::cerr << complaint.program
              << ": error: " << (complaint.text.empty() ? error.what() : complaint.text) << " (see "
              << complaint.program << " --help)\n";
    return 2;
  }
}

CLI::Validator whole_number(const std::string& what, int least) {
  return CLI::Validator(
      [=](const std::string& text) {
        int number = 0;
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        const bool fits = error == std::errc() && stop == end && number >= least;
        return fits ? std::string() : "'" + text + "' is not " + what;
      },
      "");
}

CLI::Validator number_between(double least, double most) {
  return CLI::Validator(
      [=](const std::string& text) {
        double number = 0.0;
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        const bool fits = error == std::errc() && stop == end && number >= least && number <= most;
        return fits ? std::string()
                    : "'" + text + "' is not a number from " + CLI::detail::to_string(least) +
                          " to " + CLI::detail::to_string(most);
      },
      "");
}
