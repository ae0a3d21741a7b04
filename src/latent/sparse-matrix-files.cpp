#include <cstdint>

#include <velmora/matrix-files.hpp>

#include "../support/log-site.hpp"
#include "../support/number-text.hpp"
#include "logged-opening.hpp"

namespace VX::Dialog {

using detail::corpus_log;
using zu::log::Level;

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
  const std::optional<std::string> text = detail::read_or_log(
      path, {corpus_log, "read_smat_data", "read_sparse_data() Cannot open file "});
  if (!text) {
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
  // Compared with the size of the whole matrix, so only a file without gaps reads as true.
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

}  // namespace VX::Dialog
