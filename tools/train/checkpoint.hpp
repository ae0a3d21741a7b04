// Checkpoints: the word factors after a sweep, from which a later run goes on.
//
// A sweep depends on nothing else, so a run that resumes ends with the same model, bit for bit, as
// one that was never interrupted. A checkpoint bears the fingerprint of the corpus and the settings
// that it belongs to, and a checksum.
//
// Layout, all numbers in the machine's own form: "VLMTRAIN", fingerprint (8 bytes), sweeps done,
// dimensions, words (8 bytes each), the factors column by column (4 bytes each), checksum of all
// that (8 bytes). Used by training.cpp and sweeps.cpp. Tested by
// tools/train/tests/checkpoint-test.cpp.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include <Eigen/Core>

#include "descriptor.hpp"

namespace velmora::trainer {

struct Checkpoint {
  std::uint64_t fingerprint = 0;
  std::uint64_t sweeps = 0;
  /// D x V
  Eigen::MatrixXf word_factors;
};

/// The file of a checkpoint, held for one run: no other run can hold it until the object or the
/// process ends.
class CheckpointFile {
 public:
  /// Creates an empty file where there is none. Clears what killed runs have left beside it. Throws
  /// Failure when the file can't be written, is neither empty nor a checkpoint, or is held by
  /// another run.
  explicit CheckpointFile(const std::filesystem::path& path);
  /// Removes a file that was created and never written.
  ~CheckpointFile();
  CheckpointFile(const CheckpointFile&) = delete;
  CheckpointFile& operator=(const CheckpointFile&) = delete;

  const std::filesystem::path& path() const { return path_; }

  /// Nothing when no sweep has been saved yet. Throws Failure for a damaged file.
  std::optional<Checkpoint> read() const;

  /// The new content appears whole or not at all. Throws Failure.
  void write(const Checkpoint& checkpoint);

 private:
  void hold();
  void remove_leftovers() const;

  std::filesystem::path path_;
  Descriptor held_;
  bool created_ = false;
};

}  // namespace velmora::trainer
