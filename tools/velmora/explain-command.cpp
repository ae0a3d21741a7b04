// `velmora explain`: why a rule gets its score for a sentence. Tested by
// tools/velmora/tests/commands-test.cpp.
#include <climits>
#include <iostream>
#include <memory>

#include "command-line.hpp"
#include "commands.hpp"
#include "dialogue.hpp"
#include "explanation-output.hpp"

namespace {

constexpr const char* kDescription = "Shows why a rule gets its score for a sentence";

constexpr const char* kFooter =
    "The table lists pairs of words, the strongest first: a word that was said, a word of the "
    "rule,\n"
    "and what the pair adds to the score because the two are used alike (latent), are the same "
    "word\n"
    "(words) or share letters (letters). All pairs together are the score. \"(other rules)\" "
    "stands\n"
    "for what the sentences of other rules add or take away.\n"
    "\n"
    "Exit status: 0 when all went well, 1 on failure, 2 on wrong usage.";

struct ExplainSettings {
  DialogueOptions dialogue;
  int rule_id = 0;
  std::string sentence;
  std::size_t top = 12;
};

int explain(const ExplainSettings& settings) {
  const velmora::Matcher matcher = open_matcher(settings.dialogue);
  print_explanation(std::cout, matcher, matcher.explain(settings.sentence, settings.rule_id),
                    settings.top);
  return 0;
}

}  // namespace

void add_explain_command(CLI::App& program, Action& action) {
  const auto settings = std::make_shared<ExplainSettings>();
  CLI::App* command = program.add_subcommand("explain", kDescription)->footer(kFooter);
  add_dialogue_options(*command, settings->dialogue)->required();
  command->add_option("ID", settings->rule_id, "The rule")
      ->option_text(" ")
      ->required()
      ->check(whole_number("a rule id", INT_MIN));
  command->add_option("SENTENCE", settings->sentence, "What a user says")
      ->option_text(" ")
      ->required();
  command->add_option("--top", settings->top, "Show the N strongest pairs (default: 12)")
      ->option_text("N")
      ->check(whole_number("a number from 1 on", 1));
  command->callback([&action, settings] { action = [settings] { return explain(*settings); }; });
}
