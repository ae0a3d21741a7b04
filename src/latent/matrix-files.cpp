// Dense and sparse matrix files, tested by tests/latent/matrix-files-test.cpp, and prints.
#include <velmora/matrix-files.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <limits>

#include "../support/log-site.hpp"
#include "../support/number-text.hpp"
#include "../support/text-file.hpp"

Eigen::IOFormat HeavyFmt(Eigen::FullPrecision, 0, ", ", "\n", "[", "]", "[", "]");

namespace VX::Dialog {

using detail::append_number;
using detail::corpus_log;
using zu::log::Level;

namespace {

// Cuts toward zero. What no int can hold becomes the nearest limit, what is no number 0.
int to_int(double value) {
  if (std::isnan(value)) {
    return 0;
  }
  constexpr double kLowest = std::numeric_limits<int>::min();
  constexpr double kHighest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(value, kLowest, kHighest));
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

// Prints "[value value ]", the elements above 0 alone.
template <typename Vector>
void print_positive(const Vector& vector) {
  std::cout << "[";
  for (Eigen::Index i = 0; i != vector.size(); ++i) {
    if (vector.coeff(i) > 0.0) {
      std::cout << vector.coeff(i) << " ";
    }
  }
  std::cout << "]\n";
}

}  // namespace

bool read_mat_data(char* path, Eigen::MatrixXd& matrix) {
  const std::optional<std::string> text = detail::read_text_file(path);
  if (!text) {
    VELMORA_LOG(corpus_log, Level::error, "read_mat_data")
        << "read_mat_data() Cannot open file " << path;
    return false;
  }
  detail::NumberReader numbers(*text);
  int columns = 0;
  int rows = 0;
  numbers.read(columns);
  numbers.read(rows);
  // In two steps: when an allocation fails, Eigen leaves a pointer to what it freed for it.
  matrix.resize(0, 0);
  matrix.resize(std::max(rows, 0), std::max(columns, 0));
  double value = 0.0;
  for (double& element : matrix.reshaped()) {
    // A failed read is no reason to stop: the remaining elements get what it leaves.
    numbers.read(value);
    element = value;
  }
  return true;
}

bool read_mat_data(char* path, Eigen::MatrixXi& matrix) {
  VELMORA_LOG(corpus_log, Level::info, "read_mat_data") << " read_mat_data()reading " << path;
  const std::optional<std::string> text = detail::read_text_file(path);
  if (!text) {
    VELMORA_LOG(corpus_log, Level::error, "read_mat_data")
        << " read_mat_data() Cannot open file " << path;
    return false;
  }
  detail::NumberReader numbers(*text);
  int columns = 0;
  int rows = 0;
  numbers.read(columns);
  numbers.read(rows);
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
  std::ofstream out(path);
  if (!out) {
    VELMORA_LOG(corpus_log, Level::error, "write_mat_data")
        << "write_mat_data() Cannot open file " << path;
    return false;
  }
  write_matrix(out, matrix);
  return true;
}

bool write_mat_data(char* path, Eigen::MatrixXi& matrix) {
  VELMORA_LOG(corpus_log, Level::info, "write_mat_data") << "write_mat_data() writing " << path;
  std::ofstream out(path);
  if (!out) {
    VELMORA_LOG(corpus_log, Level::error, "write_mat_data")
        << " write_mat_data() Cannot open file " << path;
    return false;
  }
  write_matrix(out, matrix);
  return true;
}

namespace {

// What became of one column block of a sparse matrix file.
enum class Block { complete, ended, out_of_order };

Block read_sparse_column(detail::NumberReader& numbers, int count, Eigen::Index column,
                         double& value, Eigen::SparseMatrix<double>& matrix) {
  int word_id = 0;
  for (int previous = -1, i = 0; i != count; ++i) {
    numbers.read(word_id);
    numbers.read(value);
    if (numbers.ended()) {
      return Block::ended;
    }
    if (word_id <= previous) {
      return Block::out_of_order;
    }
    if (word_id < matrix.rows() && column < matrix.cols()) {
      matrix.coeffRef(word_id, column) = value;
    }
    previous = word_id;
  }
  return Block::complete;
}

}  // namespace

bool read_smat_data(std::string path, Eigen::SparseMatrix<double>& data_mat) {
  const std::optional<std::string> text = detail::read_text_file(path);
  if (!text) {
    VELMORA_LOG(corpus_log, Level::error, "read_smat_data")
        << "read_sparse_data() Cannot open file " << path;
    return false;
  }
  detail::NumberReader numbers(*text);
  int columns = 0;
  int header_value = 0;
  numbers.read(columns);
  numbers.read(header_value);
  int count = 0;
  double value = 0.0;
  std::uint32_t no_values = 0;  // a 32-bit sum, which may wrap around as the product below may
  for (int column = 0; column < columns; ++column) {
    if (!numbers.read(count)) {
      break;  // the header promised more than there is
    }
    if (count <= 0) {
      continue;
    }
    const Block block = read_sparse_column(numbers, count, column, value, data_mat);
    if (block == Block::out_of_order) {
      VELMORA_LOG(corpus_log, Level::error, "read_smat_data")
          << "read_sparse_data() The word index should be in ascending order";
      return false;
    }
    if (block == Block::ended) {
      break;
    }
    no_values += static_cast<std::uint32_t>(count);
  }
  data_mat.makeCompressed();
  // Compared with the size of the whole matrix, so only a file without a gap is told as read.
  const auto cells =
      static_cast<std::uint32_t>(data_mat.rows()) * static_cast<std::uint32_t>(data_mat.cols());
  if (no_values == cells) {
    return true;
  }
  VELMORA_LOG(corpus_log, Level::error, "read_smat_data")
      << "read_sparse_data() no_values does not match with data_mat.nnz()";
  VELMORA_LOG(corpus_log, Level::error, "read_smat_data")
      << static_cast<int>(no_values) << " " << static_cast<int>(cells);
  return false;
}

void print_smat_nnz(Eigen::SparseMatrix<double> matrix) {
  for (Eigen::Index column = 0; column != matrix.outerSize(); ++column) {
    std::cout << "[";
    for (Eigen::SparseMatrix<double>::InnerIterator entry(matrix, column); entry; ++entry) {
      std::cout << entry.value() << " ";
    }
    std::cout << "]\n";
  }
}

void print_vec_nnz(Eigen::VectorXd vector) {
  print_positive(vector);
}

}  // namespace VX::Dialog

void print_vec_(Eigen::VectorXd vector) {
  VX::Dialog::print_positive(vector);
}

void print_svec_nnz(Eigen::SparseVector<double> vector) {
  VX::Dialog::print_positive(vector);
}

void print_mat_(Eigen::MatrixXd matrix) {
  for (const auto& column : matrix.colwise()) {
    VX::Dialog::print_positive(column);
  }
}
