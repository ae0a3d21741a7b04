// Checkpoints: the word factors after a sweep, from which a later run goes on.
//
// A sweep depends on nothing else, so a run that resumes ends with the same model, bit for bit, as
// one that was never interrupted. A checkpoint bears the fingerprint of the corpus and the settings
// that it belongs to, and a checksum.
//
// Layout, all numbers in the machine's own form: "VLMTRAIN", fingerprint (8 bytes), sweeps done,
// dimensions, words (8 bytes each), the factors column by column (4 bytes each), checksum of all
// that (8 bytes). Used by training.cpp. Tested by tests/checkpoint-test.cpp.
#pragma once

#include <cstdint>
#include <filesystem>

#include <Eigen/Core>

namespace velmora::trainer {

struct Checkpoint {
  std::uint64_t fingerprint = 0;
  std::uint64_t sweeps = 0;
  /// D x V
  Eigen::MatrixXf word_factors;
};

/// The file appears whole or not at all. Throws Failure.
void write_checkpoint(const Checkpoint& checkpoint, const std::filesystem::path& path);

/// Throws Failure for a file that can't be read, is no checkpoint, or is damaged.
Checkpoint read_checkpoint(const std::filesystem::path& path);

}  // namespace velmora::trainer
