// Implementation of options.hpp.
#include "options.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <thread>

namespace velmora::trainer {

namespace {

constexpr const char* kDescription =
    "Trains a latent model on text: corpora in, a model directory out.\n"
    "A line of a corpus is a document: text, or label<TAB>text, where the label names the source.";

double number_of(const std::string& text) {
  std::size_t end = 0;
  const double number = std::stod(text, &end);
  return end == text.size() ? number : std::nan("");
}

// "LABEL=W"; a label may hold an equals sign itself.
std::string read_label_weight(const std::string& text, std::map<std::string, double>& weights) {
  const std::size_t sign = text.rfind('=');
  double weight = std::nan("");
  try {
    weight = sign == std::string::npos ? weight : number_of(text.substr(sign + 1));
  } catch (const std::exception&) {  // no number at all: stays as it is
  }
  if (!(weight >= 0.0) || !std::isfinite(weight)) {
    return "'" + text + "' is not of the form LABEL=W with a number W of 0 or more";
  }
  weights[text.substr(0, sign)] = weight;
  return "";
}

void require(bool condition, const std::string& message) {
  if (!condition) {
    throw CLI::ValidationError(message);
  }
}

void check_together(const Options& options) {
  require(options.corpus.stemmed || !options.corpus.language.empty(),
          "--language is required, unless the corpora are stems (--stemmed)");
  require(options.output.empty() != options.stems_only.empty(),
          "one of --output and --stems-only is required, and not both");
  require(!options.resume || !options.checkpoint.empty(), "--resume needs --checkpoint");
}

const CLI::Range kAboveZero(std::numeric_limits<double>::min(), 1e12, "a number above 0");

CLI::Range whole(double smallest, double largest) {
  return CLI::Range(smallest, largest);
}

}  // namespace

ParsedOptions parse_options(int argc, char** argv) {
  ParsedOptions parsed;
  Options& options = parsed.options;
  const unsigned cores = std::thread::hardware_concurrency();
  options.corpus.threads = static_cast<int>(std::max(1U, cores));

  CLI::App app(kDescription, "velmora-train");
  app.set_version_flag("--version", "velmora-train " VELMORA_TRAIN_VERSION);
  app.option_defaults()->always_capture_default();

  app.add_option("CORPUS", options.corpus.files, "Corpora")->required();
  app.add_option("--language", options.corpus.language,
                 "Language of the stemmer: enu, frf, jpj; others get words without stemming");
  app.add_option("--output", options.output, "Model directory to make");
  app.add_flag("--force", options.force, "Replace a model that lies there");

  const char* stems = "Stems";
  app.add_option("--stems-only", options.stems_only,
                 "Only stem the corpora: write a line label<TAB>stem stem ... for each line")
      ->group(stems);
  app.add_flag("--stemmed", options.corpus.stemmed, "The corpora are such files of stems")
      ->group(stems);

  const char* words = "Words";
  app.add_option("--vocabulary", options.vocabulary, "Most words of the dictionary")
      ->check(whole(2, 10'000'000))
      ->group(words);
  app.add_option("--min-count", options.min_count, "Fewest documents that hold a word")
      ->check(whole(1, 1e9))
      ->group(words);
  std::vector<std::string> everyday;
  app.add_option("--everyday", everyday,
                 "LABEL of a source of everyday text: dictionary and idf come from these alone "
                 "(repeatable; default: all sources)")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->group(words);
  app.add_option("--idf-floor", options.idf_floor, "Smallest idf")->check(kAboveZero)->group(words);

  const char* training = "Training";
  std::vector<std::string> label_weights;
  app.add_option("--weight", label_weights,
                 "LABEL=W: weight of the documents of a source (repeatable; default 1)")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->group(training);
  app.add_option("--dim", options.factorisation.dim, "Latent dimensions")
      ->check(whole(1, 2000))
      ->group(training);
  app.add_option("--sweeps", options.sweeps, "Sweeps of least squares")
      ->check(whole(1, 1000))
      ->group(training);
  app.add_option("--train-lambda", options.factorisation.lambda, "Ridge term of the training")
      ->check(kAboveZero)
      ->group(training);
  app.add_option("--missing-weight", options.factorisation.missing_weight,
                 "Weight of a word that a document does not hold")
      ->check(CLI::Range(0.0, 1.0))
      ->group(training);
  app.add_option("--seed", options.random_start, "Start of the random numbers")->group(training);
  app.add_option("--threads", options.corpus.threads, "Threads; the model does not depend on it")
      ->check(whole(1, 256))
      ->group(training);
  app.add_option("--checkpoint", options.checkpoint, "Save the factors here after each sweep")
      ->group(training);
  app.add_flag("--resume", options.resume, "Go on from the checkpoint")->group(training);

  const char* model = "Model files";
  app.add_option("--lambda", options.model.lambda, "Ridge term at inference")
      ->check(kAboveZero)
      ->group(model);
  app.add_option("--row-scaling", options.model.row_scaling,
                 "E: each word vector p becomes p / |p|^E")
      ->check(CLI::Range(0.0, 1.0))
      ->group(model);
  app.add_option("--digits", options.model.digits,
                 "1 or 2: factors as integers of so many digits; 6: six significant digits")
      ->check(CLI::IsMember({1, 2, 6}))
      ->group(model);

  const char* run = "Run";
  app.add_option("--keep-work", options.keep_work, "Keep the stage files in this directory")
      ->group(run);
  app.add_flag("--quiet", options.quiet, "No progress, only errors")->group(run);

  try {
    app.parse(argc, argv);
    options.everyday.insert(everyday.begin(), everyday.end());
    for (const std::string& text : label_weights) {
      const std::string error = read_label_weight(text, options.label_weights);
      require(error.empty(), "--weight: " + error);
    }
    check_together(options);
  } catch (const CLI::ParseError& error) {
    parsed.exit_status = app.exit(error) == 0 ? 0 : 2;
  }
  options.factorisation.threads = options.corpus.threads;
  options.model.missing_weight = options.factorisation.missing_weight;
  return parsed;
}

}  // namespace velmora::trainer
