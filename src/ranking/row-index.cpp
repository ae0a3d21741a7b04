#include "row-index.hpp"

#include <algorithm>
#include <array>
#include <cmath>

namespace VX::Dialog::detail {

// Why the margin holds. Let x and y be a row and a query at length N = kLength, a and b their
// integers, and x = a + e, y = b + f. Then
//
//     x.y - a.b = e.y + a.f,   so   |x.y - a.b| <= |e| N + (N + |e|) |f|
//
// and x.y is N^2 times the cosine. The products and sums of a.b are integers below 2^31, so exact:
// by Cauchy and Schwarz no part of the sum exceeds (N + sqrt(D)/2)^2, since rounding moves each of
// the D numbers by 1/2 at most. |e| and |f| are measured; of the rows the largest counts.
//
// The rest is rounding in double precision. With squares of lengths within 1e-200 to 1e200 nothing
// overflows, and what underflows is below 1e-300 of the result. The computed x differs from the
// true one by a relative (D/2 + 3) u, u = 2^-53, y likewise, and the computed cosine from the true
// one by (2 D + 6) u: in units of N^2 < 2^30 that is together below (3 D + 12) 2^-23, and so below
// 1 for every D up to kLargestDim. kRounding allows more than that, and rounds the margin up.

namespace {

constexpr std::size_t kLargestDim = 1'000'000;
constexpr int kRounding = 3;
constexpr double kShortestSquare = 1e-200;
constexpr double kLongestSquare = 1e200;

// Eight 16-bit numbers fill a register of the baseline instruction set. Rows are not padded to it:
// past their end the query has zeros, and the numbers of the next row count nothing.
constexpr std::size_t kPadding = 8;

std::size_t padded(std::size_t dim) {
  return (dim + kPadding - 1) / kPadding * kPadding;
}

double square_of(std::span<const double> numbers) {
  double square = 0.0;
  for (const double number : numbers) {
    square += number * number;
  }
  return square;
}

bool can_be_bounded(double square) {
  return square >= kShortestSquare && square <= kLongestSquare;
}

// Writes the numbers at length kLength as integers; the distance between the two.
double round_to_integers(std::span<const double> numbers, double square, std::int16_t* integers) {
  const double factor = RowIndex::kLength / std::sqrt(square);
  double error = 0.0;
  for (const double number : numbers) {
    const double scaled = number * factor;
    const auto rounded = static_cast<std::int16_t>(scaled + std::copysign(0.5, scaled));
    *integers++ = rounded;
    error += (scaled - rounded) * (scaled - rounded);
  }
  return std::sqrt(error);
}

constexpr std::size_t kRowsAtOnce = 4;

// Several rows share the loads of the query. The compiler turns this into multiplications of eight
// pairs at a time; being integers, the sums are the same in whatever order it adds.
std::array<int, kRowsAtOnce> dots_of_group(const std::array<const std::int16_t*, kRowsAtOnce>& rows,
                                           const std::int16_t* query, std::size_t size) {
  const auto [row0, row1, row2, row3] = rows;
  int dot0 = 0;
  int dot1 = 0;
  int dot2 = 0;
  int dot3 = 0;
  for (std::size_t i = 0; i != size; ++i) {
    dot0 += row0[i] * query[i];
    dot1 += row1[i] * query[i];
    dot2 += row2[i] * query[i];
    dot3 += row3[i] * query[i];
  }
  return {dot0, dot1, dot2, dot3};
}

}  // namespace

RowIndex::RowIndex(const std::vector<std::vector<double>>& rows)
    : dim_(rows.empty() ? 0 : rows.front().size()) {
  values_.resize(rows.size() * dim_ + kPadding);
  for (const std::vector<double>& row : rows) {
    add(row);
  }
}

RowIndex::RowIndex(const double* rows, std::size_t count, std::size_t dim) : dim_(dim) {
  values_.resize(count * dim + kPadding);
  for (std::size_t row = 0; row != count; ++row) {
    add({rows + row * dim, dim});
  }
}

void RowIndex::add(std::span<const double> row) {
  const double square = square_of(row);
  if (row.size() == dim_ && dim_ <= kLargestDim && can_be_bounded(square)) {
    error_ = std::max(error_, round_to_integers(row, square, values_.data() + size_ * dim_));
  } else if (row.size() != dim_ ||
             std::any_of(row.begin(), row.end(), [](double number) { return number != 0.0; })) {
    unbounded_.push_back(static_cast<int>(size_));
  }
  ++size_;
}

std::optional<CoarseQuery> RowIndex::coarse(std::span<const double> query) const {
  const double square = square_of(query);
  if (query.size() != dim_ || dim_ > kLargestDim || !can_be_bounded(square)) {
    return std::nullopt;
  }
  CoarseQuery coarse;
  coarse.values.resize(padded(dim_));
  const double error = round_to_integers(query, square, coarse.values.data());
  coarse.margin = static_cast<int>(error_ * kLength + (kLength + error_) * error) + kRounding;
  return coarse;
}

void RowIndex::dots(const CoarseQuery& query, std::span<const int> rows,
                    std::span<int> dots) const {
  const auto start_of = [&](std::size_t place) {
    return values_.data() + static_cast<std::size_t>(rows[place]) * dim_;
  };
  for (std::size_t place = 0; place < rows.size(); place += kRowsAtOnce) {
    const std::size_t count = std::min(kRowsAtOnce, rows.size() - place);
    std::array<const std::int16_t*, kRowsAtOnce> group;
    for (std::size_t i = 0; i != kRowsAtOnce; ++i) {
      group[i] = start_of(place + std::min(i, count - 1));
    }
    const auto found = dots_of_group(group, query.values.data(), query.values.size());
    std::copy_n(found.begin(), count, dots.begin() + static_cast<std::ptrdiff_t>(place));
  }
}

}  // namespace VX::Dialog::detail
