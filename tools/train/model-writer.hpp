// From trained factors to the files of a model directory.
//
// Word vectors are evened out, brought to a common size, and rounded to few digits: a matrix file
// may hold small integers, which take a quarter of the room and lose nothing that could be
// measured. Used by training.cpp. Tested by tools/train/tests/model-writer-test.cpp.
#pragma once

#include <filesystem>

#include <Eigen/Core>

namespace velmora::trainer {

struct ModelSettings {
  /// Each word vector p becomes p / |p|^row_scaling.
  double row_scaling = 0.5;
  /// Ridge term for inference, for word vectors with a mean square length of 1.
  double lambda = 3.0;
  double missing_weight = 0.01;
  /// 1 or 2: integers of so many digits; 6: six significant digits.
  int digits = 1;
};

/// Factors as they are to be written, and the ridge term that belongs to them.
struct ScaledFactors {
  Eigen::MatrixXd word_factors;
  double lambda = 0.0;
};

/// word_factors   D x V
///
/// With s the factor that takes 4 standard deviations of all entries (8, for two digits) to the
/// largest integer, every entry is multiplied by s, clipped and rounded, and lambda is multiplied
/// by the square of s, so that inference gives the same vectors but for their length. Throws
/// Failure when the factors hold no number but 0, or one that is not finite.
ScaledFactors scale_factors(const Eigen::MatrixXf& word_factors, const ModelSettings& settings);

/// Writes "model" and "model.conf" into a directory that holds "dictionary" and "idf", reads all
/// four back as the library does, and throws Failure unless they say what was meant.
void write_model(const ScaledFactors& factors, const ModelSettings& settings,
                 const std::filesystem::path& directory);

}  // namespace velmora::trainer
