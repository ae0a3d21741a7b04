// Puts models side by side: what different trainings know about the same words in one model.
//
// Used by main.cpp. Tested by tools/train/tests/teacher-test.cpp.
#pragma once

#include <filesystem>
#include <vector>

#include <Eigen/Core>

#include "training-settings.hpp"

namespace velmora::trainer {

/// The factors P of several models, each D(i) x V, one below the other, each at a mean square
/// length of 1 times its weight. With plain sums of words a cosine of the joined vectors is then a
/// mean of the models' cosines.
Eigen::MatrixXf join_factors(const std::vector<Eigen::MatrixXd>& factors,
                             const std::vector<double>& weights);

/// Makes a model of those of settings.join, which must have the same dictionary and idf. Throws
/// std::runtime_error; then no model appears.
void join_models(const TrainingSettings& settings);

}  // namespace velmora::trainer
