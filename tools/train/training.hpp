// The two things that the program does, from options to files.
//
// Used by main.cpp. Tested by tests/program-test.cpp.
#pragma once

#include "options.hpp"

namespace velmora::trainer {

/// --stems-only: a file of stems. Throws Failure or Interrupted; then the file does not appear.
void write_stems(const Options& options);

/// Trains a model. Throws Failure or Interrupted; then no model appears, and a checkpoint stays.
void train_model(const Options& options);

}  // namespace velmora::trainer
