#include "training.hpp"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <zu/log.hpp>

#include "../../src/support/model-files.hpp"
#include "checkpoint.hpp"
#include "corpus.hpp"
#include "failure.hpp"
#include "output-directory.hpp"
#include "output-file.hpp"
#include "progress.hpp"
#include "regression.hpp"
#include "sweeps.hpp"
#include "teacher.hpp"
#include "vocabulary.hpp"
#include "weighting.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;
namespace files = VX::Dialog::detail;

namespace {

void check_label(const Corpus& corpus, const std::string& option, const std::string& label) {
  if (std::find(corpus.labels.begin(), corpus.labels.end(), label) == corpus.labels.end()) {
    throw Failure(option + ": no document has the label \"" + label + "\"");
  }
}

Corpus read_whole_corpus(const TrainingSettings& settings) {
  Progress progress(settings.corpus.stemmed ? "reading" : "stemming", corpus_size(settings.corpus),
                    settings.progress);
  Corpus corpus = read_corpus(settings.corpus, [&](double bytes) { progress.advance(bytes); });
  progress.finish(std::to_string(corpus.lines) + " lines, " + std::to_string(corpus.counts.rows()) +
                  " different documents");
  if (corpus.counts.rows() == 0) {
    throw Failure("the corpora hold no words");
  }
  for (const std::string& label : settings.everyday) {
    check_label(corpus, "--everyday", label);
  }
  for (const auto& [label, weight] : settings.label_weights) {
    check_label(corpus, "--weight", label);
  }
  return corpus;
}

// Dictionary and idf, in memory as in the files of the model.
struct WordTables {
  std::vector<DictionaryEntry> dictionary;
  std::vector<double> idf;
};

WordTables choose_words(const TrainingSettings& settings, const Corpus& corpus) {
  const DocumentFrequencies frequencies = count_documents(corpus, settings.everyday);
  WordTables tables;
  tables.dictionary =
      choose_dictionary(corpus, frequencies, settings.vocabulary, settings.min_count);
  if (tables.dictionary.size() < 2) {
    throw Failure("fewer than two words stand in " + std::to_string(settings.min_count) +
                  " or more documents (--min-count); the corpora are too small");
  }
  tables.idf = idf_values(tables.dictionary, frequencies.documents, settings.idf_floor);
  return tables;
}

TrainingCorpus weigh_corpus(const TrainingSettings& settings, const Corpus& corpus,
                            const WordTables& tables) {
  Progress progress("weighting", 0.0, settings.progress);
  WeightedDocuments documents =
      weigh_documents(corpus, tables.dictionary, tables.idf, settings.label_weights);
  progress.finish(std::to_string(tables.dictionary.size()) + " words, " +
                  std::to_string(documents.rows.rows()) + " documents with two of them or more, " +
                  std::to_string(documents.rows.stored()) + " weights");
  if (documents.rows.rows() == 0) {
    throw Failure("no document holds two words of the dictionary; the corpora are too small");
  }
  if (std::none_of(documents.weights.begin(), documents.weights.end(),
                   [](double weight) { return weight > 0.0; })) {
    throw Failure("all documents have the weight 0 (--weight)");
  }
  return make_training_corpus(std::move(documents.rows), tables.dictionary.size(),
                              documents.weights);
}

void write_words(const WordTables& tables, const fs::path& model_directory) {
  write_dictionary(tables.dictionary, model_directory / files::kDictionaryFile);
  write_idf(tables.idf, model_directory / files::kIdfFile);
}

// The corpora are read, and their words written into the model directory.
TrainingCorpus prepare_corpus(const TrainingSettings& settings, const fs::path& model_directory) {
  const Corpus corpus = read_whole_corpus(settings);
  const WordTables tables = choose_words(settings, corpus);
  write_words(tables, model_directory);
  return weigh_corpus(settings, corpus, tables);
}

TaughtTexts read_teacher(const TrainingSettings& settings, const WordTables& tables) {
  std::map<std::string, std::int32_t> word_ids;
  for (const DictionaryEntry& entry : tables.dictionary) {
    word_ids.emplace(entry.word, static_cast<std::int32_t>(word_ids.size()));
  }
  Progress progress("reading vectors", corpus_size(settings.corpus), settings.progress);
  TaughtTexts texts = read_taught_texts(
      {settings.corpus, settings.teacher, settings.label_weights, settings.mean_share}, word_ids,
      tables.idf, [&](double bytes) { progress.advance(bytes); });
  progress.finish(std::to_string(texts.rows.rows()) + " texts with a vector");
  return texts;
}

// Word factors whose sums follow the teacher.
Eigen::MatrixXf follow_teacher(const TrainingSettings& settings, const fs::path& model_directory) {
  const WordTables tables = choose_words(settings, read_whole_corpus(settings));
  write_words(tables, model_directory);
  const TaughtTexts texts = read_teacher(settings, tables);
  Progress progress("regression", 1.0, settings.progress);
  const RowMatrix vectors =
      word_vectors(texts, settings.teacher_lambda, settings.factorisation.threads,
                   [&](double share) { progress.advance(share); });
  progress.finish("");
  Eigen::MatrixXf factors = principal_factors(vectors, tables.idf, settings.factorisation.dim);
  tell_apart_short_words(factors, settings.least_length, settings.random_start);
  return factors;
}

// Brings the factors to the lengths that inference will see, and refines them there. Returns how
// they are to be written.
ModelSettings refine_factors(const TrainingSettings& settings, const TrainingCorpus& corpus,
                             Eigen::MatrixXf& word_factors) {
  ModelSettings unrounded = settings.model;
  unrounded.digits = 6;
  word_factors = scale_factors(word_factors, unrounded).word_factors.cast<float>();

  ModelSettings refined = settings.model;
  refined.row_scaling = 0.0;  // done
  if (settings.refinement.lambda > 0.0) {
    refined.lambda = settings.refinement.lambda;
  }
  const double inference_share = settings.model.lambda / refined.lambda;
  Progress progress("refining", settings.refinement.steps, settings.progress);
  refine(corpus, settings.refinement, settings.model.missing_weight, settings.factorisation.threads,
         settings.random_start, word_factors, refined.lambda,
         [&](double steps) { progress.advance(steps); });
  progress.finish("");
  refined.lambda *= inference_share;
  return refined;
}

void report_words_without_factors(Progress::Show show, const Eigen::MatrixXd& word_factors) {
  Eigen::Index empty = 0;
  for (Eigen::Index word = 0; word != word_factors.cols(); ++word) {
    empty += word_factors.col(word).isZero(0.0) ? 1 : 0;
  }
  if (empty != 0 && show != Progress::Show::nothing) {
    std::fprintf(stderr, "note: all factors of %ld words are 0; these words will not count\n",
                 static_cast<long>(empty));
  }
}

}  // namespace

void write_stems(const CorpusInput& corpus, const fs::path& path, Progress::Show show) {
  Progress progress("stemming", corpus_size(corpus), show);
  ReplacedFile file(path);
  std::size_t lines = 0;
  for_each_document(
      corpus,
      [&](const Document& document) {
        file.write(stem_line(document));
        ++lines;
      },
      [&](double bytes) { progress.advance(bytes); });
  file.publish();
  progress.finish(std::to_string(lines) + " lines");
}

void train_model(const TrainingSettings& settings) {
  // The library reports every file that it writes or reads.
  zu::log::setLevel(zu::log::Level::warning);
  std::optional<CheckpointFile> checkpoint;
  if (!settings.checkpoint.empty()) {
    checkpoint.emplace(settings.checkpoint);
  }
  OutputDirectory output(settings.output, settings.force);
  ModelSettings model = settings.model;
  Eigen::MatrixXf word_factors;
  if (settings.teacher.empty()) {
    const TrainingCorpus corpus = prepare_corpus(settings, output.path());
    word_factors = run_sweeps(settings, corpus, checkpoint ? &*checkpoint : nullptr);
    if (settings.refinement.steps != 0) {
      model = refine_factors(settings, corpus, word_factors);
    }
  } else {
    word_factors = follow_teacher(settings, output.path());
  }
  const ScaledFactors scaled = scale_factors(word_factors, model);
  report_words_without_factors(settings.progress, scaled.word_factors);
  write_model(scaled, model, output.path());
  output.publish();
}

}  // namespace velmora::trainer
