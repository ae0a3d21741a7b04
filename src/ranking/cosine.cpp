// The formula of the cosine in its two forms: for one pair of vectors, and for many rows against
// one query. Both sum in index order, so they agree to the last bit.
#include "cosine.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <functional>

namespace VX::Dialog::detail {

double cosine_of(const std::vector<double>& first, const std::vector<double>& second) {
  if (first.empty() || second.size() < first.size()) {
    return 0.0;
  }
  double dot = 0.0;
  double first_square = 0.0;
  double second_square = 0.0;
  // Three sums side by side, each in index order; a longer second vector's tail does not count.
  for (std::size_t d = 0; d != first.size(); ++d) {
    dot += first[d] * second[d];
    first_square += first[d] * first[d];
    second_square += second[d] * second[d];
  }
  if (dot == 0.0) {
    return 0.0;
  }
  return dot / std::sqrt(first_square) / std::sqrt(second_square);
}

namespace {

constexpr std::size_t kRowsAtOnce = 8;

// Two rows side by side in one register of the baseline instruction set. Wider registers sum faster
// and cost more than that: the processor slows down for them, and the fold-in of the next sentence
// with it.
using Pair = double __attribute__((vector_size(16)));
constexpr std::size_t kPairs = kRowsAtOnce / 2;

using RowGroup = std::array<const double*, kRowsAtOnce>;

// Sums over one query and several rows of n values, each in index order. The rows are independent
// of one another, so nothing is reassociated.
struct RowSums {
  std::array<Pair, kPairs> dot = {};
  std::array<Pair, kPairs> square = {};
};

RowSums sum_rows(const RowGroup& rows, const double* query, std::size_t n) {
  RowSums sums;
  for (std::size_t i = 0; i != n; ++i) {
    const Pair q = {query[i], query[i]};
    for (std::size_t p = 0; p != kPairs; ++p) {
      const Pair values = {rows[2 * p][i], rows[2 * p + 1][i]};
      sums.dot[p] += values * q;
      sums.square[p] += values * values;
    }
  }
  return sums;
}

// Asks for the first two cache lines of a row that will be scored soon; the hardware then fetches
// the rest. Rows are scattered in memory, and large dialogues do not fit into a cache.
void prefetch(const std::vector<double>& row) {
  constexpr std::size_t kDoublesInLine = 8;
  if (row.size() > kDoublesInLine) {
    __builtin_prefetch(row.data());
    __builtin_prefetch(row.data() + kDoublesInLine);
  }
}

// Scores rows of one length, kRowsAtOnce at a time.
class RowBatch {
 public:
  RowBatch(const std::vector<double>& query, std::vector<double>& scores)
      : query_(query), scores_(scores) {}

  void add(const std::vector<double>& row, std::size_t place) {
    if (row.empty() || row.size() > query_.size()) {
      scores_[place] = 0.0;  // nothing to compare, or nothing to compare it with
      return;
    }
    if (row.size() != size_) {
      flush();
      size_ = row.size();
      query_norm_ = norm_of_query(size_);
    }
    rows_[count_] = row.data();
    places_[count_] = place;
    if (++count_ == kRowsAtOnce) {
      flush();
    }
  }

  void flush() {
    if (count_ == 0) {
      return;
    }
    std::fill(rows_.begin() + static_cast<std::ptrdiff_t>(count_), rows_.end(), rows_[0]);
    const RowSums sums = sum_rows(rows_, query_.data(), size_);
    for (std::size_t r = 0; r != count_; ++r) {
      const double dot = sums.dot[r / 2][r % 2];
      const double score = dot / std::sqrt(sums.square[r / 2][r % 2]) / query_norm_;
      // Exactly 0 also for a zero vector, whatever the division made of it.
      scores_[places_[r]] = dot == 0.0 ? 0.0 : score;
    }
    count_ = 0;
  }

 private:
  // The norm of the first n values, summed in index order as for every row.
  double norm_of_query(std::size_t n) const {
    double square = 0.0;
    for (std::size_t i = 0; i != n; ++i) {
      square += query_[i] * query_[i];
    }
    return std::sqrt(square);
  }

  const std::vector<double>& query_;
  std::vector<double>& scores_;
  std::size_t size_ = 0;  // of the rows of the batch
  double query_norm_ = 0.0;
  std::size_t count_ = 0;
  RowGroup rows_{};
  std::array<std::size_t, kRowsAtOnce> places_{};
};

bool rise_strictly(const std::vector<int>& rows) {
  return std::adjacent_find(rows.begin(), rows.end(), std::greater_equal<>()) == rows.end();
}

std::vector<int> distinct_rows(const std::vector<int>& rows, std::size_t table_size) {
  std::vector<bool> seen(table_size);
  std::vector<int> distinct;
  for (const int row : rows) {
    if (!seen[static_cast<std::size_t>(row)]) {
      seen[static_cast<std::size_t>(row)] = true;
      distinct.push_back(row);
    }
  }
  return distinct;
}

std::vector<double> score_distinct_rows(const VectorTable& vectors,
                                        const std::vector<double>& query,
                                        const std::vector<int>& rows) {
  std::vector<double> scores(rows.size());
  RowBatch batch(query, scores);
  for (std::size_t place = 0; place != rows.size(); ++place) {
    if (place + kRowsAtOnce < rows.size()) {
      prefetch(vectors[static_cast<std::size_t>(rows[place + kRowsAtOnce])]);
    }
    batch.add(vectors[static_cast<std::size_t>(rows[place])], place);
  }
  batch.flush();
  return scores;
}

}  // namespace

std::vector<double> score_rows(const VectorTable& vectors, const std::vector<double>& query,
                               const std::vector<int>& rows) {
  if (rise_strictly(rows)) {  // no two rules share a stem set
    return score_distinct_rows(vectors, query, rows);
  }
  const std::vector<int> distinct = distinct_rows(rows, vectors.size());
  const std::vector<double> distinct_scores = score_distinct_rows(vectors, query, distinct);
  std::vector<double> score_of_row(vectors.size());
  for (std::size_t i = 0; i != distinct.size(); ++i) {
    score_of_row[static_cast<std::size_t>(distinct[i])] = distinct_scores[i];
  }
  std::vector<double> scores(rows.size());
  std::transform(rows.begin(), rows.end(), scores.begin(),
                 [&](int row) { return score_of_row[static_cast<std::size_t>(row)]; });
  return scores;
}

}  // namespace VX::Dialog::detail
