// The command line of velmora-console; see console-options.hpp.
#include "console-options.hpp"

#include <CLI/CLI.hpp>

namespace {

constexpr const char* kDescription =
    "Ranks the rules of a dialogue for each sentence read from standard input.";

constexpr const char* kFooter =
    "The rule file holds \"id<TAB>sentence\" lines, several lines an id; the application file\n"
    "\"name<TAB>sentence\" lines. Blank lines and lines that begin with # are skipped.\n"
    "\n"
    "A snapshot saves the start: with --snapshot NAME the rules are compiled once and kept as NAME "
    "in\n"
    "the model directory; later starts take known rules from there, compile only new ones and "
    "bring\n"
    "NAME up to date. It is made anew when the model has changed since. The library's own "
    "snapshot\n"
    "files \"newindex\" and \"index\" in that directory are rewritten on the way.\n"
    "\n"
    "Exit status: 0 when all went well, 1 on failure, 2 on wrong usage.";

// A snapshot lies beside the files of the model and must not overwrite them.
std::string check_snapshot_name(const std::string& name) {
  if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos) {
    return "'" + name + "' is no plain file name";
  }
  for (const char* file : {"dictionary", "idf", "model", "model.conf"}) {
    if (name == file) {
      return "'" + name + "' is a file of the model itself";
    }
  }
  return {};
}

}  // namespace

std::optional<int> read_options(int argc, char** argv, ConsoleOptions& options) {
  CLI::App app(kDescription, "velmora-console");
  app.footer(kFooter);
  app.get_formatter()->column_width(28);
  app.set_version_flag("--version", "velmora-console " VELMORA_VERSION);
  app.add_option("--language", options.language,
                 "Language of the model: enu, frf or jpj (required)")
      ->option_text("CODE")
      ->required();
  app.add_option(
         "--model", options.model,
         "Base directory of models, with PATH/<language>/model/\n(default: the installed models)")
      ->option_text("PATH");
  CLI::Option* rules =
      app.add_option("--rules", options.rules_path, "Rules to match")->option_text("FILE");
  CLI::Option* apps = app.add_option("--apps", options.apps_path, "Match applications, not rules")
                          ->option_text("FILE")
                          ->excludes(rules);
  app.add_option(
         "--top", options.top,
         "Show at most N rules a sentence (default: 5);\na match has at most 21 different scores")
      ->option_text("N")
      ->check(CLI::PositiveNumber);
  app.add_option("--active", options.active, "Rules that may match, for example 101,600-699")
      ->option_text("IDS")
      ->needs(rules);
  app.add_option("--snapshot", options.snapshot, "Start from a snapshot, or make it (see below)")
      ->option_text("NAME")
      ->needs(rules)
      ->check(CLI::Validator(check_snapshot_name, ""));
  app.add_option("--threshold", options.threshold, "Least score of an application (default: 0)")
      ->option_text("X")
      ->needs(apps);
  app.add_flag("--json", options.json, "Print one JSON object a sentence");
  app.add_flag("--verbose", options.verbose, "Show the log of the library on standard error");
  try {
    app.parse(argc, argv);
    if (options.rules_path.empty() && options.apps_path.empty()) {
      throw CLI::RequiredError("one of --rules and --apps");
    }
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : 2;
  }
  return std::nullopt;
}
