#include "sparse-rows.hpp"

namespace velmora::trainer {

SparseRows transposed(const SparseRows& matrix, std::size_t columns,
                      std::span<const float> row_factors) {
  SparseRows result;
  result.row_begin.assign(columns + 1, 0);
  for (std::int32_t column : matrix.column) {
    ++result.row_begin[static_cast<std::size_t>(column) + 1];
  }
  for (std::size_t column = 0; column != columns; ++column) {
    result.row_begin[column + 1] += result.row_begin[column];
  }

  result.column.resize(matrix.stored());
  result.value.resize(matrix.stored());
  std::vector<std::size_t> next_place(result.row_begin.begin(), result.row_begin.end() - 1);
  for (std::size_t row = 0; row != matrix.rows(); ++row) {
    for (std::size_t place = matrix.row_begin[row]; place != matrix.row_begin[row + 1]; ++place) {
      const std::size_t target = next_place[static_cast<std::size_t>(matrix.column[place])]++;
      result.column[target] = static_cast<std::int32_t>(row);
      result.value[target] = matrix.value[place] * row_factors[row];
    }
  }
  return result;
}

}  // namespace velmora::trainer
