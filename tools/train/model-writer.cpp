#include "model-writer.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>

#include <velmora/dictionary.hpp>
#include <velmora/matrix-files.hpp>
#include <velmora/wordsense-model.hpp>

#include "../../src/support/model-files.hpp"
#include "failure.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;
namespace files = VX::Dialog::detail;

namespace {

using Eigen::MatrixXd;

// Largest integer of so many digits, and how many standard deviations it stands for. One digit has
// to divide its few steps well; two have steps to spare, so hardly anything is clipped.
struct IntegerForm {
  double largest;
  double deviations;
};

IntegerForm integer_form(int digits) {
  return digits == 1 ? IntegerForm{9.0, 4.0} : IntegerForm{99.0, 8.0};
}

void even_out_lengths(MatrixXd& word_factors, double row_scaling) {
  for (Eigen::Index word = 0; word != word_factors.cols(); ++word) {
    const double length = word_factors.col(word).norm();
    if (length > 0.0) {  // a word of no document has no vector
      word_factors.col(word) *= std::pow(length, -row_scaling);
    }
  }
}

// Factors of a file with six significant digits are rounded; integers are exact.
bool same_factors(const MatrixXd& read, const MatrixXd& meant) {
  return read.rows() == meant.rows() && read.cols() == meant.cols() &&
         ((read - meant).array().abs() <= 1e-5 * meant.array().abs()).all();
}

[[noreturn]] void fail_check(const fs::path& directory, const char* file) {
  throw Failure("cannot write model: file \"" + std::string(file) + "\" in " + directory.string() +
                " does not read back as it was meant (is the disk full?)");
}

void check_word_tables(const fs::path& directory, std::size_t words) {
  std::string dictionary_path = directory / files::kDictionaryFile;
  const std::map<std::string, int> ids = VX::Dialog::get_word_ids(dictionary_path);
  int next_id = 0;  // sorted by bytes, so the ids of the map run upward
  for (const auto& [word, word_id] : ids) {
    next_id += word_id == next_id ? 1 : 0;
  }
  if (ids.size() != words || next_id != static_cast<int>(words)) {
    fail_check(directory, files::kDictionaryFile);
  }
  std::string idf_path = directory / files::kIdfFile;
  const std::map<int, double> idf = VX::Dialog::load_idf(idf_path);
  const bool positive =
      std::all_of(idf.begin(), idf.end(), [](const auto& entry) { return entry.second > 0.0; });
  if (idf.size() != words || !positive) {
    fail_check(directory, files::kIdfFile);
  }
}

void check_model(const fs::path& directory, const wordsense_model& meant) {
  wordsense_model read;
  const bool opened =
      VX::Dialog::read_wordsense_model((directory / files::kModelFile).string(), read);
  auto close = [](double first, double second) {
    return std::abs(first - second) <= 1e-5 * std::abs(second);
  };
  if (!opened || read.dim != meant.dim || !close(read.lambda, meant.lambda) ||
      !close(read.missing_weight, meant.missing_weight)) {
    fail_check(directory, files::kModelFile);
  }
  if (!same_factors(read.word_factors, meant.word_factors)) {
    fail_check(directory, files::kFactorsFile);
  }
}

}  // namespace

ScaledFactors scale_factors(const Eigen::MatrixXf& word_factors, const ModelSettings& settings) {
  ScaledFactors scaled;
  MatrixXd& factors = scaled.word_factors;
  factors = word_factors.cast<double>();
  even_out_lengths(factors, settings.row_scaling);
  const double mean_square_length = factors.squaredNorm() / static_cast<double>(factors.cols());
  if (!std::isfinite(mean_square_length) || mean_square_length == 0.0) {
    throw Failure("training gave no usable factors: they are all 0 or not finite");
  }
  factors /= std::sqrt(mean_square_length);
  scaled.lambda = settings.lambda;

  if (settings.digits != 6) {
    const IntegerForm form = integer_form(settings.digits);
    const double deviation = std::sqrt(1.0 / static_cast<double>(factors.rows()));
    const double scale = form.largest / (form.deviations * deviation);
    factors = (factors * scale).array().round().max(-form.largest).min(form.largest);
    scaled.lambda *= scale * scale;
  }
  return scaled;
}

void write_model(const ScaledFactors& factors, const ModelSettings& settings,
                 const fs::path& directory) {
  wordsense_model model;
  model.word_factors = factors.word_factors;
  model.dim = static_cast<int>(factors.word_factors.rows());
  model.lambda = factors.lambda;
  model.missing_weight = settings.missing_weight;

  // The writers report only whether a file could be opened; reading it back shows the rest.
  std::string scalar_path = directory / files::kModelFile;
  std::string matrix_path = scalar_path + files::kFactorsSuffix;
  (void)VX::Dialog::write_wordsense_model(scalar_path.data(), model);
  if (settings.digits == 6) {
    (void)VX::Dialog::write_mat_data(matrix_path, model.word_factors);
  } else {
    Eigen::MatrixXi integers = model.word_factors.cast<int>();
    (void)VX::Dialog::write_mat_data(matrix_path.data(), integers);
  }
  check_word_tables(directory, static_cast<std::size_t>(model.word_factors.cols()));
  check_model(directory, model);
}

}  // namespace velmora::trainer
