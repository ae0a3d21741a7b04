#include "sweeps.hpp"

#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "failure.hpp"
#include "fingerprint.hpp"
#include "progress.hpp"

namespace velmora::trainer {

namespace {

std::string text_of(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.10g", number);
  return text;
}

template <typename Element>
void add_elements(Fingerprint& fingerprint, const std::vector<Element>& elements) {
  fingerprint.add(elements.data(), elements.size() * sizeof(Element));
}

// Of all that the factors of a sweep depend on.
std::uint64_t training_fingerprint(const TrainingSettings& settings, const TrainingCorpus& corpus) {
  Fingerprint fingerprint;
  add_elements(fingerprint, corpus.by_document.row_begin);
  add_elements(fingerprint, corpus.by_document.column);
  add_elements(fingerprint, corpus.by_document.value);
  add_elements(fingerprint, corpus.root_weights);
  const std::string numbers =
      text_of(settings.factorisation.dim) + " " + text_of(settings.factorisation.lambda) + " " +
      text_of(settings.factorisation.missing_weight) + " " + std::to_string(settings.random_start);
  fingerprint.add(numbers.data(), numbers.size());
  return fingerprint.value();
}

void check_resumed(const Checkpoint& state, const CheckpointFile& file,
                   const TrainingSettings& settings, std::uint64_t fingerprint) {
  const std::string name = "checkpoint " + file.path().string();
  if (state.fingerprint != fingerprint) {
    throw Failure(name + " belongs to other corpora or other settings");
  }
  if (state.sweeps > static_cast<std::uint64_t>(settings.sweeps)) {
    throw Failure(name + " has " + std::to_string(state.sweeps) + " sweeps already (--sweeps)");
  }
}

Checkpoint first_state(const TrainingSettings& settings, const TrainingCorpus& corpus,
                       const CheckpointFile* checkpoint) {
  const std::uint64_t fingerprint = training_fingerprint(settings, corpus);
  if (settings.resume && checkpoint != nullptr) {
    if (std::optional<Checkpoint> saved = checkpoint->read()) {
      check_resumed(*saved, *checkpoint, settings, fingerprint);
      return *std::move(saved);
    }
  }
  Checkpoint state;
  state.fingerprint = fingerprint;
  state.word_factors =
      first_word_factors(settings.factorisation.dim, corpus.by_word.rows(), settings.random_start);
  return state;
}

}  // namespace

Eigen::MatrixXf run_sweeps(const TrainingSettings& settings, const TrainingCorpus& corpus,
                           CheckpointFile* checkpoint) {
  Checkpoint state = first_state(settings, corpus, checkpoint);
  const auto sweeps = static_cast<std::uint64_t>(settings.sweeps);
  const double work = sweep_work(corpus, settings.factorisation);
  Progress progress("training", work * static_cast<double>(sweeps - state.sweeps),
                    settings.progress);
  if (settings.resume) {
    progress.say("training: going on after sweep " + std::to_string(state.sweeps));
  }
  while (state.sweeps != sweeps) {
    const double objective = run_sweep(corpus, settings.factorisation, state.word_factors,
                                       [&](double done) { progress.advance(done); });
    ++state.sweeps;
    progress.say("sweep " + std::to_string(state.sweeps) + " of " + std::to_string(sweeps) +
                 ": objective " + text_of(objective));
    if (checkpoint != nullptr) {
      checkpoint->write(state);
    }
  }
  progress.finish("");
  return std::move(state.word_factors);
}

}  // namespace velmora::trainer
