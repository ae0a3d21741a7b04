#include "evaluate-options.hpp"

#include "command-line.hpp"

namespace {

constexpr const char* kDescription =
    "Measures how well a model matches, through the public interface of the library.";

constexpr const char* kFooter =
    "Intents: files of \"label<TAB>sentence\". The training sentences become rules, and each test\n"
    "sentence is ranked against them. The rank of a label counts labels, by the best of their "
    "rules;\n"
    "of labels with equal scores the right one counts as the last. One match of the library gives "
    "at\n"
    "most 21 scores: the labels found are switched off for the next turn until the right one "
    "comes,\n"
    "so every label has a rank. The time is that of the first match, stemming included.\n"
    "\n"
    "Out of scope: one sentence a line, or \"label<TAB>sentence\". The figure is the area under "
    "the\n"
    "ROC curve of the best score: 1 when every test sentence scores above every one of these.\n"
    "\n"
    "Pairs: \"score<TAB>sentence<TAB>sentence\". Both sentences become sorted stems, each once "
    "and\n"
    "known to the model, as in matching, and the similarity is simpleDist of the two; it is 0 "
    "when\n"
    "one has no known word.\n"
    "\n"
    "Low overlap: test sentences whose cosine with every training sentence of their label is "
    "below\n"
    "0.2, a stem weighing its idf squared. The best threshold separates right first answers from\n"
    "wrong ones and from sentences out of scope; with --json every failure is listed.\n"
    "\n"
    "The baseline takes the same stems, dictionary and idf table, and compares tf-idf vectors.\n"
    "\n"
    "Exit status: 0 when all went well, 1 on failure, 2 on wrong usage.";

/// The number of sentences that --rules means; -1 when it means nothing.
int parse_rules(const std::string& text) {
  if (text == "joined") {
    return 0;
  }
  if (text == "single") {
    return 1;
  }
  int number = 0;
  return CLI::detail::lexical_cast(text, number) && number > 0 ? number : -1;
}

}  // namespace

std::optional<int> read_options(int argc, char** argv, EvaluateOptions& options) {
  CLI::App app(kDescription, "velmora-evaluate");
  app.footer(kFooter);
  app.get_formatter()->column_width(30);
  app.set_version_flag("--version", "velmora-evaluate " VELMORA_VERSION);
  app.add_option("--language", options.language,
                 "Language of the model: enu, frf or jpj (required)")
      ->option_text("CODE")
      ->required();
  app.add_option("--model", options.model,
                 "Folder of the model, as velmora-train writes it\n(default: the installed model)")
      ->option_text("DIR");
  CLI::Option* intents = app.add_option("--intents", options.intents, "Training and test file")
                             ->option_text("TRAIN TEST")
                             ->expected(2);
  std::string rules = "joined";
  app.add_option("--rules", rules,
                 "A rule is: joined = all sentences of a label (default),\n"
                 "single = one sentence, N = N sentences of a label")
      ->option_text("joined|single|N")
      ->needs(intents)
      ->check(CLI::Validator(
          [](const std::string& text) {
            return parse_rules(text) < 0 ? "not joined, single or a number above 0" : std::string();
          },
          ""));
  app.add_option("--out-of-scope", options.out_of_scope, "Sentences that belong to no label")
      ->option_text("FILE")
      ->needs(intents);
  app.add_option("--pairs", options.pairs, "Pairs of sentences with their similarity")
      ->option_text("FILE");
  app.add_flag("--matcher", options.matcher, "Also match through velmora::Matcher")->needs(intents);
  std::string baseline;
  app.add_option("--baseline", baseline, "Show a simple measure beside the matcher: tf-idf")
      ->option_text("NAME")
      ->check(CLI::IsMember({"tf-idf"}));
  app.add_flag("--json", options.json, "Print one JSON object");
  if (const std::optional<int> status = parse_command_line(app, argc, argv)) {
    return status;
  }
  if (options.intents.empty() && options.pairs.empty()) {
    throw WrongUsage("one of --intents and --pairs is required (see velmora-evaluate --help)");
  }
  options.sentences_per_rule = parse_rules(rules);
  options.baseline = !baseline.empty();
  return std::nullopt;
}
