#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <velmora/matrix-files.hpp>

#include "../support/log-site.hpp"
#include "../support/number-text.hpp"
#include "logged-opening.hpp"

namespace VX::Dialog {

using detail::append_number;
using detail::corpus_log;
using zu::log::Level;

namespace {

// Cuts toward zero. What does not fit into an int becomes the nearest limit, NaN becomes 0.
int to_int(double value) {
  if (std::isnan(value)) {
    return 0;
  }
  constexpr double kLowest = std::numeric_limits<int>::min();
  constexpr double kHighest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(value, kLowest, kHighest));
}

struct Shape {
  int columns = 0;
  int rows = 0;
};

Shape read_shape(detail::NumberReader& numbers) {
  Shape shape;
  numbers.read(shape.columns);
  numbers.read(shape.rows);
  return shape;
}

template <typename Matrix>
void write_matrix(std::ofstream& out, const Matrix& matrix) {
  std::string line = std::to_string(matrix.cols()) + " " + std::to_string(matrix.rows()) + "\n";
  for (Eigen::Index column = 0; column != matrix.cols(); ++column) {
    for (Eigen::Index row = 0; row != matrix.rows(); ++row) {
      append_number(line, matrix(row, column));
      line += ' ';
    }
    line += '\n';
    out << line;
    line.clear();
  }
  out << line;
}

}  // namespace

bool read_mat_data(char* path, Eigen::MatrixXd& matrix) {
  const std::optional<std::string> text =
      detail::read_or_log(path, {corpus_log, "read_mat_data", "read_mat_data() Cannot open file "});
  if (!text) {
    return false;
  }
  detail::NumberReader numbers(*text);
  const auto [columns, rows] = read_shape(numbers);
  // In two steps: when an allocation fails, Eigen leaves a pointer to what it freed for it.
  matrix.resize(0, 0);
  matrix.resize(std::max(rows, 0), std::max(columns, 0));
  double value = 0.0;
  for (double& element : matrix.reshaped()) {
    // A failed read does not end the loop: the remaining elements get what it left in `value`.
    numbers.read(value);
    element = value;
  }
  return true;
}

bool read_mat_data(char* path, Eigen::MatrixXi& matrix) {
  VELMORA_LOG(corpus_log, Level::info, "read_mat_data") << " read_mat_data()reading " << path;
  const std::optional<std::string> text = detail::read_or_log(
      path, {corpus_log, "read_mat_data", " read_mat_data() Cannot open file "});
  if (!text) {
    return false;
  }
  detail::NumberReader numbers(*text);
  const auto [columns, rows] = read_shape(numbers);
  double value = 0.0;
  bool more = true;
  // Columns without rows hold nothing to read, however many the header promises.
  for (std::int64_t column = 0; rows > 0 && column < columns; ++column) {
    const std::int64_t first = column * matrix.rows();
    for (std::int64_t row = 0; row < rows; ++row) {
      more = more && numbers.read(value);
      if (first + row < matrix.size()) {
        matrix.data()[first + row] = to_int(value);
      } else if (!more) {
        break;  // nothing left to read, no place left to store
      }
    }
    if (!more && first >= matrix.size()) {
      break;
    }
  }
  return true;
}

bool write_mat_data(std::string path, Eigen::MatrixXd& matrix) {
  VELMORA_LOG(corpus_log, Level::info, "write_mat_data")
      << "[wordsense-corpus write_mat_data()]: writing " << path;
  std::ofstream out = detail::create_or_log(
      path, {corpus_log, "write_mat_data", "write_mat_data() Cannot open file "});
  if (!out) {
    return false;
  }
  write_matrix(out, matrix);
  return true;
}

bool write_mat_data(char* path, Eigen::MatrixXi& matrix) {
  VELMORA_LOG(corpus_log, Level::info, "write_mat_data") << "write_mat_data() writing " << path;
  std::ofstream out = detail::create_or_log(
      path, {corpus_log, "write_mat_data", " write_mat_data() Cannot open file "});
  if (!out) {
    return false;
  }
  write_matrix(out, matrix);
  return true;
}

}  // namespace VX::Dialog
