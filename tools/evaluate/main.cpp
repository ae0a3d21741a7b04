// velmora-evaluate: measures how well a model matches on data with known answers.
//
// For whoever trains or chooses a model; see --help. Works through the public interface alone.
// Tested by tests/evaluate-test.cpp.
#include <charconv>
#include <exception>
#include <iostream>

#include <zu/log.hpp>

#include "contenders.hpp"
#include "evaluate-options.hpp"
#include "evaluation.hpp"
#include "known-words.hpp"
#include "model-place.hpp"
#include "report.hpp"
#include "table-file.hpp"

namespace {

/// What the files of the command line hold.
struct TestData {
  Intents training;
  Intents tests;
  std::vector<std::string> out_of_scope;
  std::vector<ScoredPair> pairs;
};

bool read_out_of_scope(const std::string& path, std::vector<std::string>& sentences) {
  const Table table = read_table(path, {"sentence"});
  for (const TableLine& line : table.lines) {
    const std::string& text = line.fields.front();
    sentences.push_back(text.substr(text.find('\t') + 1));
  }
  print_complaints(table.errors);
  return table.errors.empty();
}

bool read_pairs(const std::string& path, std::vector<ScoredPair>& pairs) {
  Table table = read_table(path, {"score", "first sentence", "second sentence"});
  for (const TableLine& line : table.lines) {
    const std::string& text = line.fields[0];
    double score = 0.0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), score);
    if (error != std::errc() || stop != text.data() + text.size()) {
      table.errors.push_back(complaint(path, line.number, "score '" + text + "' is no number"));
    }
    pairs.push_back({score, line.fields[1], line.fields[2]});
  }
  print_complaints(table.errors);
  return table.errors.empty();
}

bool read_data(const EvaluateOptions& options, TestData& data) {
  if (!options.intents.empty() &&
      !(read_named_sentences(options.intents[0], "label", data.training) &&
        read_named_sentences(options.intents[1], "label", data.tests))) {
    return false;
  }
  return (options.out_of_scope.empty() ||
          read_out_of_scope(options.out_of_scope, data.out_of_scope)) &&
         (options.pairs.empty() || read_pairs(options.pairs, data.pairs));
}

/// Makes rules of the training sentences and leaves out those without a known word.
RuleSet known_rules(const EvaluateOptions& options, const Intents& training, KnownWords& words,
                    Report& report) {
  RuleSet known;
  for (const auto& [rule_id, rule] : make_rules(training, options.sentences_per_rule)) {
    std::map<int, std::vector<std::string>> single = {{0, rule.sentences}};
    if (remove_unknown(single, words).empty()) {
      known[static_cast<int>(known.size())] = rule;
    } else {
      ++report.unknown_rule_count;
    }
  }
  report.label_count = training.size();
  report.rule_count = known.size();
  return known;
}

void evaluate(const EvaluateOptions& options, const TestData& data, const Contender& contender,
              Report& report) {
  report.contenders.push_back(contender.name);
  if (!options.intents.empty()) {
    report.intents.push_back(evaluate_intents(contender, data.tests, data.out_of_scope));
  }
  if (!options.pairs.empty()) {
    report.pairs.push_back(evaluate_pairs(contender, data.pairs));
  }
}

int run(const EvaluateOptions& options) {
  ModelPlace place;
  TestData data;
  if (!find_model(options.model, options.language, place) || !read_data(options, data)) {
    return 1;
  }
  KnownWords words(options.language, place.directory + "dictionary");

  Report report;
  report.language = options.language;
  report.model_directory = place.directory;
  report.has_out_of_scope = !options.out_of_scope.empty();
  report.pair_count = data.pairs.size();
  const RuleSet rules = known_rules(options, data.training, words, report);
  if (!options.intents.empty() && rules.empty()) {
    std::cerr << "the model knows no word of any training sentence\n";
    return 1;
  }
  evaluate(options, data, latent_contender(place, options.language, words, rules), report);
  if (options.baseline) {
    evaluate(options, data, tfidf_contender(place, words, rules), report);
  }

  if (options.json) {
    print_report_json(std::cout, report);
  } else {
    print_report(std::cout, report);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  EvaluateOptions options;
  if (const std::optional<int> status = read_options(argc, argv, options)) {
    return *status;
  }
  zu::log::setConsole(false);
  try {
    return run(options);
  } catch (const std::exception& failure) {
    std::cerr << "velmora-evaluate: " << failure.what() << "\n";
    return 1;
  }
}
