#include <fstream>

#include <velmora/matrix-files.hpp>
#include <velmora/wordsense-model.hpp>

#include "../support/log-site.hpp"
#include "../support/model-files.hpp"
#include "../support/number-text.hpp"
#include "logged-opening.hpp"

wordsense_model::wordsense_model() = default;
wordsense_model::wordsense_model(const wordsense_model& other) = default;
wordsense_model::~wordsense_model() = default;

wordsense_model& wordsense_model::operator=(const wordsense_model& other) {
  wordsense_model copy(other);  // a failed allocation leaves this record as it was
  word_factors.swap(copy.word_factors);
  reserved_factors.swap(copy.reserved_factors);
  dim = other.dim;
  lambda = other.lambda;
  missing_weight = other.missing_weight;
  return *this;
}

namespace VX::Dialog {

using detail::model_log;
using zu::log::Level;

bool read_wordsense_model(std::string path, wordsense_model& model) {
  VELMORA_LOG(model_log, Level::info, "read_wordsense_model")
      << "read_wordsense_model() from " << path;
  const std::optional<std::string> text = detail::read_or_log(
      path, {model_log, "read_wordsense_model", " read_wordsense_model() Cannot open file "});
  if (!text) {
    return false;
  }
  detail::NumberReader numbers(*text);
  numbers.read(model.dim);
  numbers.read(model.lambda);
  numbers.read(model.missing_weight);
  std::string matrix_path = path + detail::kFactorsSuffix;
  // A missing matrix is logged there and is not a failure here: only the scalars decide.
  (void)read_mat_data(matrix_path.data(), model.word_factors);
  return true;
}

bool write_wordsense_model(char* path, wordsense_model& model) {
  VELMORA_LOG(model_log, Level::info, "write_wordsense_model")
      << "write_wordsense_model into " << path << "\n";
  std::ofstream out(path);
  if (!out) {
    VELMORA_LOG(model_log, Level::error, "write_wordsense_model")
        << "write_wordsense_model Cannot open file " << path << "\n";
    return false;
  }
  std::string text;
  detail::append_number(text, model.dim);
  text += '\n';
  detail::append_number(text, model.lambda);
  text += '\n';
  detail::append_number(text, model.missing_weight);
  text += '\n';
  out << text;
  return true;
}

}  // namespace VX::Dialog
