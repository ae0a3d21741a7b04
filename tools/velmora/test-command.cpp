// `velmora test`: whether sentences find the rules they should. Tested by
// tools/velmora/tests/commands-test.cpp, and run over the sample dialogues by the tests of data/.
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>

#include <nlohmann/json.hpp>

#include <velmora/error.hpp>
#include <velmora/evaluation.hpp>

#include "command-line.hpp"
#include "commands.hpp"
#include "dialogue.hpp"

namespace {

constexpr const char* kDescription = "Tests whether sentences find the rules that they should";

constexpr const char* kFooter =
    "Prints each sentence that finds another rule, and the threshold that separates right answers\n"
    "best from wrong ones.\n"
    "\n"
    "The file holds \"id<TAB>sentence\" lines: the rule that should answer, or - where none "
    "should.\n"
    "Lines with - do not count for --at-least; those that reach the best threshold are printed.\n"
    "\n"
    "Exit status: 0 when all is well, 1 when fewer sentences are right than --at-least tells or "
    "on\n"
    "failure, 2 on wrong usage.";

struct TestSettings {
  DialogueOptions dialogue;
  std::string expectations;
  double at_least = 100.0;
  bool json = false;
};

using Expectations = std::vector<velmora::Expectation>;

/// printf with up to six numbers, as a string.
template <typename... Numbers>
std::string format(const char* pattern, Numbers... numbers) {
  char text[160];
  std::snprintf(text, sizeof text, pattern, numbers...);
  return text;
}

void print_failure(const TestSettings& settings, const velmora::Expectation& expected,
                   const velmora::Failure& failure) {
  std::cout << settings.expectations << ":" << expected.line << ": wanted ";
  if (expected.id) {
    std::cout << *expected.id << format(" (rank %zu, %.2f)", failure.rank, failure.wanted_score);
  } else {
    std::cout << "no rule";
  }
  std::cout << ", got " << failure.got.id << format(" (%.2f): ", failure.got.score)
            << expected.sentence << "\n";
}

void print_totals(const velmora::Evaluation& result) {
  const auto right =
      static_cast<std::size_t>(std::llround(result.first * static_cast<double>(result.in_scope)));
  std::cout << right << " of " << result.in_scope
            << format(
                   " right (%.1f %%), %.1f %% among the first three, mean reciprocal rank %.3f\n",
                   100 * result.first, 100 * result.among_three, result.mean_reciprocal_rank)
            << format(
                   "best threshold %.2f: keeps %.0f %% of the right answers, lets through %.0f %%"
                   " of all others\n",
                   result.threshold.score, 100 * result.threshold.keeps,
                   100 * result.threshold.lets_through);
  if (result.area_under_roc) {
    std::cout << result.out_of_scope
              << format(" for no rule: area under the ROC curve %.2f\n", *result.area_under_roc);
  }
}

nlohmann::ordered_json failure_json(const velmora::Expectation& expected,
                                    const velmora::Failure& failure) {
  nlohmann::ordered_json object = {{"line", expected.line}, {"sentence", expected.sentence}};
  if (expected.id) {
    object["wanted"] = *expected.id;
    object["rank"] = failure.rank;
    object["wanted_score"] = failure.wanted_score;
  } else {
    object["wanted"] = nullptr;
  }
  object["got"] = failure.got.id;
  object["got_score"] = failure.got.score;
  return object;
}

void print_json(const Expectations& expectations, const velmora::Evaluation& result) {
  nlohmann::ordered_json failures = nlohmann::ordered_json::array();
  for (const velmora::Failure& failure : result.failures) {
    failures.push_back(failure_json(expectations[failure.expectation], failure));
  }
  nlohmann::ordered_json confusions = nlohmann::ordered_json::array();
  for (const velmora::Confusion& confusion : result.confusions) {
    confusions.push_back(
        {{"wanted", confusion.wanted}, {"got", confusion.got}, {"count", confusion.count}});
  }
  nlohmann::ordered_json object = {{"sentences", result.in_scope},
                                   {"outside", result.out_of_scope},
                                   {"first", result.first},
                                   {"among_three", result.among_three},
                                   {"mean_reciprocal_rank", result.mean_reciprocal_rank}};
  if (result.area_under_roc) {
    object["area_under_roc"] = *result.area_under_roc;
  }
  object["threshold"] = {{"score", result.threshold.score},
                         {"keeps", result.threshold.keeps},
                         {"lets_through", result.threshold.lets_through}};
  object["failures"] = failures;
  object["confusions"] = confusions;
  std::cout << object.dump(2) << "\n";
}

int test(const TestSettings& settings) {
  const Expectations expectations = velmora::read_expectations(settings.expectations);
  const velmora::Matcher matcher = open_matcher(settings.dialogue);
  for (const velmora::Expectation& expected : expectations) {
    if (expected.id && matcher.find(*expected.id) == nullptr) {
      throw velmora::Error(settings.expectations + ":" + std::to_string(expected.line) +
                           ": there is no rule " + std::to_string(*expected.id) + " in " +
                           settings.dialogue.rules);
    }
  }
  const velmora::Evaluation result = velmora::evaluate(matcher, expectations, 0);
  if (settings.json) {
    print_json(expectations, result);
  } else {
    for (const velmora::Failure& failure : result.failures) {
      print_failure(settings, expectations[failure.expectation], failure);
    }
    print_totals(result);
  }
  return 100 * result.first < settings.at_least ? 1 : 0;
}

}  // namespace

void add_test_command(CLI::App& program, Action& action) {
  const auto settings = std::make_shared<TestSettings>();
  CLI::App* command = program.add_subcommand("test", kDescription)->footer(kFooter);
  add_dialogue_options(*command, settings->dialogue)->required();
  command->add_option("--expect", settings->expectations, "Sentences and their rules")
      ->option_text("FILE")
      ->required();
  command
      ->add_option("--at-least", settings->at_least,
                   "Per cent of the sentences that must be right\n(default: 100)")
      ->option_text("PERCENT")
      ->check(number_between(0, 100));
  command->add_flag("--json", settings->json, "Print one JSON object");
  command->callback([&action, settings] { action = [settings] { return test(*settings); }; });
}
