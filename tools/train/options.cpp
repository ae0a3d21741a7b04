#include "options.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <thread>

#include <CLI/CLI.hpp>

#include <velmora/model.hpp>

#include "command-line.hpp"

namespace velmora::trainer {

namespace {

constexpr const char* kDescription =
    "Trains a latent model on text: corpora in, a model directory out.\n"
    "A line of a corpus is a document: text, or label<TAB>text, where the label names the source.";

// NaN, which no comparison lets through, for a text that is not a number.
double number_of(const std::string& text) {
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole_text = error == std::errc() && end == text.data() + text.size();
  return whole_text ? number : std::nan("");
}

CLI::Validator between(double smallest, double largest) {
  auto check = [smallest, largest](const std::string& text) {
    const double number = number_of(text);
    return number >= smallest && number <= largest
               ? std::string()
               : "'" + text + "' is not a number from " + CLI::detail::to_string(smallest) +
                     " to " + CLI::detail::to_string(largest);
  };
  return CLI::Validator(check, "");
}

void require(bool condition, const std::string& message) {
  if (!condition) {
    throw CLI::ValidationError(message);
  }
}

// "NAME=W"; a name may hold an equals sign itself, or be empty.
std::pair<std::string, double> weight_of(const std::string& text, const std::string& option) {
  const std::size_t sign = text.rfind('=');
  const double weight = sign == std::string::npos ? std::nan("") : number_of(text.substr(sign + 1));
  require(weight >= 0.0 && weight <= 1e6,
          option + ": '" + text + "' is not NAME=W with a number W from 0 to 1e6");
  return {text.substr(0, sign), weight};
}

void check_together(const Options& options) {
  const TrainingSettings& settings = options.training;
  require(settings.corpus.files.empty() != settings.join.empty(),
          settings.join.empty() ? "CORPUS is required" : "--join reads no CORPUS");
  require(!settings.join.empty() || settings.corpus.stemmed || !settings.corpus.language.empty(),
          "--language is required, unless the corpora are stems (--stemmed)");
  require(settings.output.empty() != options.stems_only.empty(),
          "one of --output and --stems-only is required, and not both");
  require(
      settings.teacher.empty() || (settings.checkpoint.empty() && settings.refinement.steps == 0),
      "--teacher has neither sweeps to save (--checkpoint) nor a refinement (--refine-steps)");
  require(!settings.resume || !settings.checkpoint.empty(), "--resume needs --checkpoint");
}

// What the command line says in another form than the settings hold it.
struct RawOptions {
  std::vector<std::string> everyday;
  std::vector<std::string> label_weights;
  std::vector<std::string> join;
};

void add_input_options(CLI::App& app, Options& options, RawOptions& raw) {
  CorpusInput& corpus = options.training.corpus;
  app.add_option("CORPUS", corpus.files, "Files of text, or of stems");
  app.add_option("--language", corpus.language,
                 "Language of the stemmer; stem text of other languages yourself (--stemmed)")
      ->check(CLI::IsMember(velmora::Model::known_languages()).description(""))
      ->type_name("enu|frf|jpj");
  app.add_option("--stems-only", options.stems_only,
                 "Only stem: write a line \"label<TAB>stem stem ...\" for each line of the corpora")
      ->type_name("FILE");
  app.add_flag("--stemmed", corpus.stemmed, "The corpora are such files of stems");
  app.add_flag(
      "--stem-sets", corpus.stem_sets,
      "Sort the stems of each document and drop repeats, as the library does with a sentence");
  app.add_option("--everyday", raw.everyday,
                 "A source of everyday text: dictionary and idf come from these sources alone "
                 "(repeatable; without it, from all)")
      ->type_name("LABEL")
      ->allow_extra_args(false);
  app.add_option("--weight", raw.label_weights,
                 "Weight of the documents of a source (repeatable; 1 for the others)")
      ->type_name("LABEL=W")
      ->allow_extra_args(false);
}

void add_teacher_options(CLI::App& app, TrainingSettings& settings, RawOptions& raw) {
  app.add_option(
         "--teacher", settings.teacher,
         "Vectors for the lines of the corpora, made by numpy.save: words get factors whose "
         "sums follow them")
      ->type_name("FILE");
  app.add_option("--mean-share", settings.mean_share,
                 "How much of the mean of those vectors is taken off each of them")
      ->check(between(0, 10))
      ->type_name("X")
      ->capture_default_str();
  app.add_option("--teacher-lambda", settings.teacher_lambda, "Ridge term of that regression")
      ->check(between(1e-6, 1e9))
      ->type_name("X")
      ->capture_default_str();
  app.add_option("--least-length", settings.least_length,
                 "Words of that regression whose vectors are shorter than this share of the usual "
                 "length get random signs beside")
      ->check(between(0, 10))
      ->type_name("X")
      ->capture_default_str();
  app.add_option("--join", raw.join,
                 "Train nothing, but put this model beside others of the same words, with a weight "
                 "(repeatable)")
      ->type_name("DIR=W")
      ->allow_extra_args(false);
}

void add_training_options(CLI::App& app, TrainingSettings& settings) {
  app.option_defaults()->always_capture_default();
  app.add_option("--vocabulary", settings.vocabulary, "Most words of the dictionary")
      ->check(between(2, 100'000))
      ->type_name("N");
  app.add_option("--min-count", settings.min_count, "Fewest documents that hold a word")
      ->check(between(1, 1e9))
      ->type_name("N");
  app.add_option("--idf-floor", settings.idf_floor, "Smallest idf")
      ->check(between(1e-6, 100))
      ->type_name("X");
  app.add_option("--dim", settings.factorisation.dim, "Latent dimensions")
      ->check(between(1, 2000))
      ->type_name("N");
  app.add_option("--sweeps", settings.sweeps, "Sweeps of alternating least squares")
      ->check(between(1, 1000))
      ->type_name("N");
  app.add_option("--train-lambda", settings.factorisation.lambda, "Ridge term of the training")
      ->check(between(1e-6, 1e9))
      ->type_name("X");
  app.add_option("--missing-weight", settings.factorisation.missing_weight,
                 "Weight of the words that a document does not hold")
      ->check(between(0, 1))
      ->type_name("X");
  app.add_option("--refine-steps", settings.refinement.steps,
                 "Steps that draw extracts of one document together; 0 for none")
      ->check(between(0, 1'000'000))
      ->type_name("N");
  app.add_option("--refine-batch", settings.refinement.batch, "Documents a step")
      ->check(between(2, 10'000))
      ->type_name("N");
  app.add_option("--refine-temperature", settings.refinement.temperature,
                 "Smaller sets only the most alike documents of a step apart")
      ->check(between(0.01, 10))
      ->type_name("X");
  app.add_option("--refine-lambda", settings.refinement.lambda,
                 "Ridge term during these steps; 0 for that of inference (--lambda)")
      ->check(between(0, 1e9))
      ->type_name("X");
  app.add_option("--refine-rate", settings.refinement.rate, "Length of the first step")
      ->check(between(1e-6, 1))
      ->type_name("X");
  app.add_option("--seed", settings.random_start, "Random seed")->type_name("N");
}

void add_output_options(CLI::App& app, TrainingSettings& settings) {
  app.add_option("--output", settings.output, "Model directory to make")->type_name("DIR");
  app.add_flag("--force", settings.force, "Replace a model that lies there");
  app.option_defaults()->always_capture_default();
  app.add_option("--lambda", settings.model.lambda, "Ridge term at inference")
      ->check(between(1e-6, 1e9))
      ->type_name("X");
  app.add_option("--row-scaling", settings.model.row_scaling,
                 "The vector p of each word becomes p / |p|^X")
      ->check(between(0, 1))
      ->type_name("X");
  app.add_option("--digits", settings.model.digits,
                 "Factors as integers of 1 or 2 digits, or with 6 significant digits")
      ->check(CLI::IsMember({1, 2, 6}).description(""))
      ->type_name("1|2|6");
}

void add_run_options(CLI::App& app, TrainingSettings& settings) {
  app.add_option("--threads", settings.corpus.threads, "Threads; the model does not depend on it")
      ->check(between(1, 256))
      ->type_name("N");
  app.option_defaults()->always_capture_default(false);
  app.add_option("--checkpoint", settings.checkpoint, "Save the factors here after each sweep")
      ->type_name("FILE");
  app.add_flag("--resume", settings.resume, "Go on from the checkpoint, if there is one");
  app.add_flag_callback(
      "--quiet", [&settings] { settings.progress = Progress::Show::nothing; },
      "No progress, only errors");
}

}  // namespace

ParsedOptions parse_options(int argc, char** argv) {
  ParsedOptions parsed;
  Options& options = parsed.options;
  TrainingSettings& settings = options.training;
  settings.corpus.threads =
      static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, 256U));

  CLI::App app(kDescription, "velmora-train");
  app.set_version_flag("--version", "velmora-train " VELMORA_TRAIN_VERSION);
  RawOptions raw;
  add_input_options(app, options, raw);
  add_teacher_options(app, settings, raw);
  add_output_options(app, settings);
  add_training_options(app, settings);
  add_run_options(app, settings);
  app.callback([&] {
    settings.everyday.insert(raw.everyday.begin(), raw.everyday.end());
    for (const std::string& text : raw.label_weights) {
      const auto [label, weight] = weight_of(text, "--weight");
      settings.label_weights[label] = weight;
    }
    for (const std::string& text : raw.join) {
      const auto [directory, weight] = weight_of(text, "--join");
      settings.join.push_back({directory, weight});
    }
    check_together(options);
  });
  parsed.exit_status = parse_command_line(app, argc, argv);
  settings.factorisation.threads = settings.corpus.threads;
  settings.model.missing_weight = settings.factorisation.missing_weight;
  return parsed;
}

}  // namespace velmora::trainer
