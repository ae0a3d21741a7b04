// Implementation of training.hpp.
#include "training.hpp"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_set>

#include <zu/log.hpp>

#include "checkpoint.hpp"
#include "failure.hpp"
#include "matrix-stage.hpp"
#include "output-directory.hpp"
#include "output-file.hpp"
#include "progress.hpp"
#include "refinement.hpp"
#include "vocabulary.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;

namespace {

// The offline tools report every step, and read_smat_data calls every sparse matrix an error.
void quieten_library() {
  zu::log::setLevel(zu::log::Level::warning);
  zu::log::setLevel("LibVelmora.Corpus", zu::log::Level::silent);
}

std::string text_of(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.10g", number);
  return text;
}

std::uint64_t fingerprint_of(std::string_view text) {
  Fingerprint fingerprint;
  fingerprint.add(text.data(), text.size());
  return fingerprint.value();
}

struct StemStage {
  DocumentFrequencies frequencies;
  std::set<std::string> labels;
  std::size_t lines = 0;
  std::size_t documents = 0;
};

// Stems the corpora into one file, without empty and repeated documents, and counts words on the
// way. A document is the same as another when its stems are, whatever its label.
StemStage run_stem_stage(const Options& options, const fs::path& stems_path) {
  StemStage stage;
  Progress progress(options.quiet, options.corpus.stemmed ? "reading" : "stemming",
                    corpus_size(options.corpus));
  OutputFile file(stems_path);
  std::unordered_set<std::uint64_t> known_documents;
  for_each_document(
      options.corpus,
      [&](const Document& document) {
        ++stage.lines;
        stage.labels.insert(document.label);
        const std::string line = stem_line(document);
        const std::string_view stems = std::string_view(line).substr(document.label.size());
        if (document.stems.empty() || !known_documents.insert(fingerprint_of(stems)).second) {
          return;
        }
        ++stage.documents;
        file.write(line);
        if (options.everyday.empty() || options.everyday.contains(document.label)) {
          count_document(document, stage.frequencies);
        }
      },
      [&](double bytes) { progress.advance(bytes); });
  file.close();
  progress.finish(std::to_string(stage.lines) + " lines, " + std::to_string(stage.documents) +
                  " different documents");
  return stage;
}

void check_label(const StemStage& stage, const std::string& option, const std::string& label) {
  if (!stage.labels.contains(label)) {
    throw Failure(option + ": no document has the label \"" + label + "\"");
  }
}

void check_stem_stage(const Options& options, const StemStage& stage) {
  if (stage.documents == 0) {
    throw Failure("the corpora hold no words");
  }
  for (const std::string& label : options.everyday) {
    check_label(stage, "--everyday", label);
  }
  for (const auto& [label, weight] : options.label_weights) {
    check_label(stage, "--weight", label);
  }
}

std::vector<DictionaryEntry> make_word_tables(const Options& options,
                                              const DocumentFrequencies& frequencies,
                                              const fs::path& directory) {
  auto dictionary = choose_dictionary(frequencies, options.vocabulary, options.min_count);
  if (dictionary.size() < 2) {
    throw Failure("fewer than two words stand in " + std::to_string(options.min_count) +
                  " or more documents (--min-count); the corpora are too small");
  }
  write_dictionary(dictionary, directory / "dictionary");
  write_idf(dictionary, frequencies.documents, options.idf_floor, directory / "idf");
  return dictionary;
}

TrainingCorpus run_matrix_stage(const Options& options, const fs::path& stems_path,
                                const std::vector<DictionaryEntry>& dictionary,
                                const fs::path& model_directory, const fs::path& work_directory) {
  MatrixStageInput input;
  input.stems = stems_path;
  input.dictionary = model_directory / "dictionary";
  input.idf = model_directory / "idf";
  input.word_ids = word_ids(dictionary);
  input.label_weights = options.label_weights;
  input.work_directory = work_directory;
  input.keep_stage_files = !options.keep_work.empty();

  Progress progress(options.quiet, "weighting", static_cast<double>(fs::file_size(stems_path)));
  WeightedDocuments documents =
      weighted_documents(input, [&](double bytes) { progress.advance(bytes); });
  progress.finish(std::to_string(dictionary.size()) + " words, " +
                  std::to_string(documents.rows.rows()) + " documents with two of them or more, " +
                  std::to_string(documents.rows.stored()) + " weights");
  if (documents.rows.rows() == 0) {
    throw Failure("no document holds two words of the dictionary; the corpora are too small");
  }
  if (std::none_of(documents.weights.begin(), documents.weights.end(),
                   [](double weight) { return weight > 0.0; })) {
    throw Failure("all documents have the weight 0 (--weight)");
  }
  return make_training_corpus(std::move(documents.rows), dictionary.size(), documents.weights);
}

template <typename Element>
void add_elements(Fingerprint& fingerprint, const std::vector<Element>& elements) {
  fingerprint.add(elements.data(), elements.size() * sizeof(Element));
}

// What the factors of a sweep depend on.
std::uint64_t training_fingerprint(const Options& options, const TrainingCorpus& corpus) {
  Fingerprint fingerprint;
  add_elements(fingerprint, corpus.by_document.row_begin);
  add_elements(fingerprint, corpus.by_document.column);
  add_elements(fingerprint, corpus.by_document.value);
  add_elements(fingerprint, corpus.root_weights);
  const std::string settings =
      text_of(options.factorisation.dim) + " " + text_of(options.factorisation.lambda) + " " +
      text_of(options.factorisation.missing_weight) + " " + std::to_string(options.random_start);
  fingerprint.add(settings.data(), settings.size());
  return fingerprint.value();
}

Checkpoint first_checkpoint(const Options& options, const TrainingCorpus& corpus) {
  Checkpoint state;
  state.fingerprint = training_fingerprint(options, corpus);
  if (options.resume && fs::exists(options.checkpoint)) {
    const std::uint64_t expected = state.fingerprint;
    state = read_checkpoint(options.checkpoint);
    if (state.fingerprint != expected) {
      throw Failure("checkpoint " + options.checkpoint.string() +
                    " belongs to other corpora or other settings");
    }
    if (state.sweeps > static_cast<std::uint64_t>(options.sweeps)) {
      throw Failure("checkpoint " + options.checkpoint.string() + " has " +
                    std::to_string(state.sweeps) + " sweeps already (--sweeps)");
    }
    return state;
  }
  state.word_factors =
      first_word_factors(options.factorisation.dim, corpus.by_word.rows(), options.random_start);
  return state;
}

Eigen::MatrixXf run_sweeps(const Options& options, const TrainingCorpus& corpus) {
  Checkpoint state = first_checkpoint(options, corpus);
  const auto sweeps = static_cast<std::uint64_t>(options.sweeps);
  const double work = sweep_work(corpus, options.factorisation);
  Progress progress(options.quiet, "training", work * static_cast<double>(sweeps - state.sweeps));
  if (options.resume) {
    progress.say("training: going on after sweep " + std::to_string(state.sweeps));
  }
  while (state.sweeps != sweeps) {
    const double objective = run_sweep(corpus, options.factorisation, state.word_factors,
                                       [&](double done) { progress.advance(done); });
    ++state.sweeps;
    progress.say("sweep " + std::to_string(state.sweeps) + " of " + std::to_string(sweeps) +
                 ": objective " + text_of(objective));
    if (!options.checkpoint.empty()) {
      write_checkpoint(state, options.checkpoint);
    }
  }
  progress.finish("");
  return std::move(state.word_factors);
}

// Brings the factors to the lengths that inference will see, and refines them there.
ModelSettings run_refinement(const Options& options, const TrainingCorpus& corpus,
                             Eigen::MatrixXf& word_factors) {
  ModelSettings unrounded = options.model;
  unrounded.digits = 6;
  word_factors = scale_factors(word_factors, unrounded).word_factors.cast<float>();

  ModelSettings refined = options.model;
  refined.row_scaling = 0.0;  // done
  if (options.refinement.lambda > 0.0) {
    refined.lambda = options.refinement.lambda;
  }
  const double inference_share = options.model.lambda / refined.lambda;
  Progress progress(options.quiet, "refining", options.refinement.steps);
  refine(corpus, options.refinement, options.model.missing_weight, options.factorisation.threads,
         options.random_start, word_factors, refined.lambda,
         [&](double steps) { progress.advance(steps); });
  progress.finish("");
  refined.lambda *= inference_share;
  return refined;
}

// A checkpoint that can't be written is better told now than after the first sweep.
void check_checkpoint_place(const Options& options) {
  if (!options.checkpoint.empty()) {
    const ReplacedFile probe(options.checkpoint);
  }
}

void tell_words_without_factors(const Options& options, const Eigen::MatrixXd& word_factors) {
  Eigen::Index empty = 0;
  for (Eigen::Index word = 0; word != word_factors.cols(); ++word) {
    empty += word_factors.col(word).isZero(0.0) ? 1 : 0;
  }
  if (empty != 0 && !options.quiet) {
    std::fprintf(stderr, "note: %ld words have factors of 0 alone and will not count\n",
                 static_cast<long>(empty));
  }
}

fs::path make_work_directory(const Options& options, const fs::path& model_directory) {
  const bool keep = !options.keep_work.empty();
  fs::path directory = keep ? options.keep_work : model_directory / "work";
  std::error_code error;
  fs::create_directory(directory, error);
  if (error || !fs::is_directory(directory) || !fs::is_empty(directory)) {
    throw Failure("work directory " + directory.string() + ": " +
                  (error ? error.message() : "it is not empty, or no directory"));
  }
  return directory;
}

}  // namespace

void write_stems(const Options& options) {
  Progress progress(options.quiet, "stemming", corpus_size(options.corpus));
  ReplacedFile file(options.stems_only);
  std::size_t lines = 0;
  for_each_document(
      options.corpus,
      [&](const Document& document) {
        file.write(stem_line(document));
        ++lines;
      },
      [&](double bytes) { progress.advance(bytes); });
  file.publish();
  progress.finish(std::to_string(lines) + " lines");
}

void train_model(const Options& options) {
  quieten_library();
  check_checkpoint_place(options);
  OutputDirectory output(options.output, options.force);
  const fs::path work_directory = make_work_directory(options, output.path());
  const fs::path stems_path = work_directory / "stems";

  StemStage stage = run_stem_stage(options, stems_path);
  check_stem_stage(options, stage);
  const auto dictionary = make_word_tables(options, stage.frequencies, output.path());
  stage = {};
  const TrainingCorpus corpus =
      run_matrix_stage(options, stems_path, dictionary, output.path(), work_directory);
  if (options.keep_work.empty()) {
    fs::remove_all(work_directory);
  }

  Eigen::MatrixXf word_factors = run_sweeps(options, corpus);
  const ModelSettings model =
      options.refinement.steps == 0 ? options.model : run_refinement(options, corpus, word_factors);
  const ScaledFactors scaled = scale_factors(word_factors, model);
  tell_words_without_factors(options, scaled.word_factors);
  write_model(scaled, model, output.path());
  output.publish();
}

}  // namespace velmora::trainer
