// The corpus in memory: a sparse matrix, row by row, without the values that are not there.
//
// Word counts and weights, a row for each document; the factorisation uses the transpose, too.
// Eight bytes for a stored value. Tested by tools/train/tests/factorisation-test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmora::trainer {

/// Rows one after the other; columns rise within a row.
struct SparseRows {
  /// Row r holds the stored places [row_begin[r], row_begin[r + 1]).
  std::vector<std::size_t> row_begin{0};
  std::vector<std::int32_t> column;
  std::vector<float> value;

  std::size_t rows() const { return row_begin.size() - 1; }
  std::size_t stored() const { return column.size(); }
  std::size_t row_size(std::size_t row) const { return row_begin[row + 1] - row_begin[row]; }
  std::span<const std::int32_t> row_columns(std::size_t row) const {
    return {column.data() + row_begin[row], row_size(row)};
  }
  std::span<const float> row_values(std::size_t row) const {
    return {value.data() + row_begin[row], row_size(row)};
  }
};

/// The transpose of a matrix of `columns` columns, each value multiplied by the factor of the row
/// that it comes from; row_factors has one element a row.
SparseRows transposed(const SparseRows& matrix, std::size_t columns,
                      std::span<const float> row_factors);

}  // namespace velmora::trainer
