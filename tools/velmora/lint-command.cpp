// `velmora lint`: what is wrong with the rules of a dialogue. Tested by
// tools/velmora/tests/commands-test.cpp.
#include <iostream>
#include <memory>

#include <velmora/lint.hpp>

#include "commands.hpp"
#include "dialogue.hpp"

namespace {

constexpr const char* kDescription = "Looks for what will make the rules match badly";

constexpr const char* kFooter =
    "Prints a warning with file and line for each word that the model does not know, sentences "
    "that\n"
    "say the same, rules that are too close to each other, and sentences that find another rule.\n"
    "\n"
    "Exit status: 0 when all went well, 1 on failure or with --strict and a warning, 2 on wrong\n"
    "usage.";

struct LintSettings {
  DialogueOptions dialogue;
  bool strict = false;
};

int lint(const LintSettings& settings) {
  const velmora::Matcher matcher = open_matcher(settings.dialogue);
  const std::vector<velmora::Finding> findings = velmora::lint(matcher);
  for (const velmora::Finding& finding : findings) {
    const velmora::Rule& rule = *matcher.find(finding.rule);
    std::cout << settings.dialogue.rules << ":" << rule.lines[finding.sentence]
              << ": warning: " << finding.text << "\n";
  }
  std::cout << findings.size() << (findings.size() == 1 ? " warning" : " warnings") << ", "
            << matcher.rules().size() << " rules\n";
  return settings.strict && !findings.empty() ? 1 : 0;
}

}  // namespace

void add_lint_command(CLI::App& program, Action& action) {
  const auto settings = std::make_shared<LintSettings>();
  CLI::App* command = program.add_subcommand("lint", kDescription)->footer(kFooter);
  add_dialogue_options(*command, settings->dialogue)->required();
  command->add_flag("--strict", settings->strict, "End with status 1 when there is a warning");
  command->callback([&action, settings] { action = [settings] { return lint(*settings); }; });
}
