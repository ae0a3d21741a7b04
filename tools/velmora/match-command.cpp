// `velmora match`: ranks the rules of a dialogue for each sentence. Tested by
// tools/velmora/tests/commands-test.cpp, and with --published by published-test.cpp.
#include <iostream>
#include <memory>

#include "../../src/support/model-files.hpp"
#include "command-line.hpp"
#include "commands.hpp"
#include "line-input.hpp"
#include "prompt.hpp"
#include "standard-output.hpp"

namespace {

constexpr const char* kDescription =
    "Ranks the rules of a dialogue for each sentence, at a prompt or from standard input";

constexpr const char* kFooter =
    "Each line of an answer holds score, rule id, and the sentence of the rule that came closest;\n"
    "words that neither the model nor the rules know are listed below.\n"
    "\n"
    "At the prompt, :help lists the commands: :why, :top, :active, :reload, :quit.\n"
    "\n"
    "--published shows what a host gets that uses the class VX::Dialog::Velmora. With --snapshot\n"
    "NAME the rules are compiled once and kept as NAME in the folder of the model; later starts\n"
    "take known rules from there, compile new ones, and bring NAME up to date. It is made anew "
    "when\n"
    "it is damaged or the model has changed since. --apps matches named applications instead of\n"
    "rules, from \"name<TAB>sentence\" lines.\n"
    "\n"
    "Exit status: 0 when all went well, 1 on failure, 2 on wrong usage.";

// A snapshot lies beside the files of the model and must not overwrite them.
std::string check_snapshot_name(const std::string& name) {
  if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos) {
    return "'" + name + "' is not a plain file name";
  }
  for (const char* file : VX::Dialog::detail::kModelFiles) {
    if (name == file) {
      return "'" + name + "' is a file of the model itself";
    }
  }
  return {};
}

void add_options(CLI::App& command, MatchSettings& settings) {
  CLI::Option* rules = add_dialogue_options(command, settings.dialogue);
  command.add_option("--top", settings.top, "Show at most N rules a sentence (default: 5)")
      ->option_text("N")
      ->check(whole_number("a number from 1 on", 1));
  command.add_option("--threshold", settings.threshold, "Show only rules that score at least X")
      ->option_text("X")
      ->check(number_between(-1, 1));
  command.add_option("--active", settings.active, "Rules that may match, for example 101,600-699")
      ->option_text("IDS")
      ->needs(rules);
  command.add_flag("--json", settings.json, "Print one JSON object a sentence");
  CLI::Option* published =
      command.add_flag("--published", settings.published, "Match through the published classes");
  CLI::Option* apps = command.add_option("--apps", settings.apps, "Match applications, not rules")
                          ->option_text("FILE")
                          ->needs(published)
                          ->excludes(rules);
  command.add_option("--snapshot", settings.snapshot, "Start from a snapshot, or make it")
      ->option_text("NAME")
      ->needs(published)
      ->excludes(apps)
      ->check(CLI::Validator(check_snapshot_name, ""));
  command.add_flag("--verbose", settings.verbose, "Show the log of the library on standard error")
      ->option_text(" ")
      ->needs(published);
}

void answer_lines(const MatchSettings& settings, const Session& session) {
  std::string sentence;
  while (read_line(sentence)) {
    if (sentence.find_first_not_of(" \t") == std::string::npos) {
      continue;
    }
    const Ranking ranking = session.rank(sentence, settings);
    if (settings.json) {
      print_ranking_json(std::cout, ranking);
    } else {
      print_ranking(std::cout, ranking, !input_is_terminal(), output_paint());
    }
    flush_output();
  }
}

int match(const MatchSettings& settings) {
  if (settings.dialogue.rules.empty() && settings.apps.empty()) {
    throw WrongUsage("--rules is required");
  }
  Session session = open_session(settings);
  if (input_is_terminal() && !settings.json) {
    run_prompt(settings, std::move(session));
  } else {
    answer_lines(settings, session);
  }
  return 0;
}

}  // namespace

Session open_session(const MatchSettings& settings) {
  return settings.published ? open_published_session(settings) : open_matcher_session(settings);
}

void add_match_command(CLI::App& program, Action& action) {
  const auto settings = std::make_shared<MatchSettings>();
  CLI::App* command = program.add_subcommand("match", kDescription)->footer(kFooter);
  add_options(*command, *settings);
  command->callback([&action, settings] { action = [settings] { return match(*settings); }; });
}
