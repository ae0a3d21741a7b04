// The cache sizes by which Eigen cuts large matrix products into blocks.
//
// Eigen would take those of the machine, and the cuts decide how sums are rounded. With fixed sizes
// a model gives the same scores, and a corpus the same model, on every machine. Every binary has
// its own copy of the setting: the library fixes it where it is loaded (src/latent/fold-in.cpp),
// the trainer where it starts. Not installed. Tested by tests/models/models-test.cpp.
#pragma once

#include <Eigen/Core>

namespace VX::Dialog::detail {

inline void fix_eigen_cache_sizes() {
  Eigen::setCpuCacheSizes(32 * 1024, 256 * 1024, 2 * 1024 * 1024);
}

}  // namespace VX::Dialog::detail
