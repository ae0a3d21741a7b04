// The two things that velmora-train does, from settings to files.
//
// Used by main.cpp. Tested by tools/train/tests/program-test.cpp.
#pragma once

#include <filesystem>

#include "training-settings.hpp"

namespace velmora::trainer {

/// Stems a corpus into a file that a later training reads as a corpus of stems. Throws
/// std::runtime_error or Interrupted; then the file does not appear.
void write_stems(const CorpusInput& corpus, const std::filesystem::path& path, Progress::Show show);

/// Trains a model. Throws std::runtime_error or Interrupted; then no model appears, and a
/// checkpoint stays.
void train_model(const TrainingSettings& settings);

}  // namespace velmora::trainer
