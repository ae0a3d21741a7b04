// A coarse copy of rows that tells which of them can be near to a query, without reading the rows.
//
// Each row is brought to length kLength and rounded to 16-bit integers, a quarter of its size. The
// dot product of two such rows is an exact integer, and lies within a known margin of the cosine,
// so a caller can rule most rows out and compute the exact cosine of the few that are left. Used by
// the rule index of the engines and by the matcher. Not installed. Tested by
// tests/ranking/rule-index-test.cpp.
//
//   const RowIndex index(rows);                       // once
//   if (const auto coarse = index.coarse(query)) {    // for each query
//     index.dots(*coarse, row_numbers, dots);
//     // cosine(row, query) is in [RowIndex::lower(dots[i], *coarse), RowIndex::upper(...)],
//     // but for the rows of index.unbounded(), about which nothing is known.
//   }
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace VX::Dialog::detail {

/// A query as a row index reads it.
struct CoarseQuery {
  std::vector<std::int16_t> values;  ///< padded with zeros
  int margin = 0;                    ///< of every dot product with it
};

/// Immutable; memory is two bytes for each number of a row, and nothing else for each row.
class RowIndex {
 public:
  /// Length that rows and queries are brought to. Integers of this length fit 16 bits, and no sum
  /// of products of two such rows, nor a part of it, leaves 32 bits.
  static constexpr double kLength = 32767.0;

  /// No rows.
  RowIndex() = default;
  /// Rows of the length of the first; others are unbounded.
  explicit RowIndex(const std::vector<std::vector<double>>& rows);
  /// `count` rows of `dim` numbers each, one after another.
  RowIndex(const double* rows, std::size_t count, std::size_t dim);

  std::size_t size() const { return size_; }
  std::size_t dim() const { return dim_; }

  /// Rows without a bound, ascending: of another length, or with a square of their length that is
  /// not within 1e-200 to 1e200 (NaN, infinities, denormals). Their dots say nothing, so they have
  /// to be scored exactly in any case. A row of zeros is not among them: it scores 0.
  const std::vector<int>& unbounded() const { return unbounded_; }

  /// Nothing when the query is of another length than the rows, or as long or short as an unbounded
  /// row; then every row has to be scored exactly.
  std::optional<CoarseQuery> coarse(std::span<const double> query) const;

  /// dots[i] becomes the product of `query` with row rows[i]; both spans are equally long.
  void dots(const CoarseQuery& query, std::span<const int> rows, std::span<int> dots) const;

  /// Bounds of the cosine (src/ranking/cosine.hpp, rounding included) that a dot stands for.
  static double lower(int dot, const CoarseQuery& query) { return (dot - query.margin) / kUnit; }
  static double upper(int dot, const CoarseQuery& query) { return (dot + query.margin) / kUnit; }

 private:
  static constexpr double kUnit = kLength * kLength;  // the dot of two rows that are the same

  void add(std::span<const double> row);

  std::size_t size_ = 0;
  std::size_t dim_ = 0;
  std::vector<std::int16_t> values_;  // size_ rows of dim_ numbers, and a tail that may be read
  double error_ = 0.0;                // no row is farther from its integers
  std::vector<int> unbounded_;
};

}  // namespace VX::Dialog::detail
