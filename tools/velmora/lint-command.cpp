// `velmora lint`: what is wrong with the rules of a dialogue. Tested by
// tools/velmora/tests/commands-test.cpp.
#include <iostream>
#include <memory>

#include <velmora/lint.hpp>

#include "commands.hpp"
#include "dialogue.hpp"

namespace {

constexpr const char* kDescription =
    "Looks for what will make the rules of a dialogue match badly, and prints a warning with file\n"
    "and line for each: words that the model does not know, sentences that say the same, rules\n"
    "that are close to each other or whose own sentence finds another rule.";

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
  CLI::App* command = program.add_subcommand("lint", kDescription);
  add_dialogue_options(*command, settings->dialogue)->required();
  command->add_flag("--strict", settings->strict, "End with status 1 when there is a warning");
  command->callback([&action, settings] { action = [settings] { return lint(*settings); }; });
}
