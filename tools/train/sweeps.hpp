// The sweeps of least squares, with a checkpoint after each.
//
// Used by training.cpp. Tested by tools/train/tests/program-test.cpp.
#pragma once

#include <Eigen/Core>

#include "checkpoint.hpp"
#include "training-settings.hpp"

namespace velmora::trainer {

/// Word factors (D x V) after the last sweep. Throws Failure when the checkpoint can't be written,
/// or does not belong to this corpus and these settings.
///
/// checkpoint   null for none; settings.resume goes on from it
Eigen::MatrixXf run_sweeps(const TrainingSettings& settings, const TrainingCorpus& corpus,
                           CheckpointFile* checkpoint);

}  // namespace velmora::trainer
