// velmora-evaluate: measures how well a model matches on data with known answers.
//
// For whoever trains or chooses a model; see --help. Works through the public interface alone.
// Tested by tests/evaluate-test.cpp.
#include <algorithm>
#include <charconv>
#include <exception>
#include <iostream>
#include <stdexcept>

#include <zu/log.hpp>

#include "command-line.hpp"
#include "contenders.hpp"
#include "evaluate-options.hpp"
#include "evaluation.hpp"
#include "known-words.hpp"
#include "report.hpp"
#include "standard-output.hpp"
#include "table-file.hpp"
#include "word-overlap.hpp"

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
      table.errors.push_back(complaint(path, line.number, "score '" + text + "' is not a number"));
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
RuleSet known_rules(const EvaluateOptions& options, const Intents& training,
                    const velmora::Model& model, Report& report) {
  RuleSet known;
  for (const auto& [rule_id, rule] : make_rules(training, options.sentences_per_rule)) {
    std::map<int, std::vector<std::string>> single = {{0, rule.sentences}};
    if (remove_unknown(single, model).empty()) {
      known[static_cast<int>(known.size())] = rule;
    } else {
      ++report.unknown_rule_count;
    }
  }
  report.label_count = training.size();
  report.rule_count = known.size();
  return known;
}

/// The sentences of the test file, by label, with what they share with the training sentences.
std::vector<TestSentence> make_tests(const TestData& data, const velmora::Model& model) {
  const WordOverlap overlap(model);
  std::vector<TestSentence> tests;
  for (const auto& [label, sentences] : data.tests) {
    const auto training = data.training.find(label);
    for (const std::string& sentence : sentences) {
      double highest = 0.0;
      if (training != data.training.end()) {
        for (const std::string& known : training->second) {
          highest = std::max(highest, overlap.of(sentence, known));
        }
      }
      tests.push_back({label, sentence, highest < kLowOverlap});
    }
  }
  return tests;
}

void evaluate(const EvaluateOptions& options, const TestData& data,
              const std::vector<TestSentence>& tests, const Contender& contender, Report& report) {
  report.contenders.push_back(contender.name);
  if (!options.intents.empty()) {
    report.intents.push_back(evaluate_intents(contender, tests, data.out_of_scope));
  }
  if (!options.pairs.empty() && contender.similarity) {
    report.pairs.push_back(evaluate_pairs(contender, data.pairs));
  }
}

velmora::Model open_model(const EvaluateOptions& options) {
  return options.model.empty() ? velmora::Model::installed(options.language)
                               : velmora::Model::load(options.model, options.language);
}

int run(const EvaluateOptions& options) {
  TestData data;
  if (!read_data(options, data)) {
    return 1;
  }
  const velmora::Model model = open_model(options);

  Report report;
  report.language = options.language;
  report.model_directory = model.directory().string();
  report.has_out_of_scope = !options.out_of_scope.empty();
  report.pair_count = data.pairs.size();
  const RuleSet rules = known_rules(options, data.training, model, report);
  if (!options.intents.empty() && rules.empty()) {
    throw std::runtime_error("the model knows no word of any training sentence");
  }
  const std::vector<TestSentence> tests = make_tests(data, model);
  report.low_overlap_count = static_cast<std::size_t>(std::count_if(
      tests.begin(), tests.end(), [](const TestSentence& test) { return test.low_overlap; }));

  evaluate(options, data, tests, latent_contender(model, rules), report);
  if (options.baseline) {
    evaluate(options, data, tests, tfidf_contender(model, rules), report);
  }
  if (options.matcher) {
    evaluate(options, data, tests, matcher_contender(model, rules), report);
  }

  if (options.json) {
    print_report_json(std::cout, report);
  } else {
    print_report(std::cout, report);
  }
  flush_output();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  prepare_standard_streams();
  zu::log::setConsole(false);
  EvaluateOptions options;
  try {
    if (const std::optional<int> status = read_options(argc, argv, options)) {
      flush_output();
      return *status;
    }
    return run(options);
  } catch (const WrongUsage& wrong) {
    std::cerr << "velmora-evaluate: error: " << wrong.what() << "\n";
    return 2;
  } catch (const std::exception& failure) {
    std::cerr << "velmora-evaluate: error: " << failure.what() << "\n";
    return 1;
  }
}
