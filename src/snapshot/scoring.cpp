#include "scoring.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace VX::Dialog::detail {

namespace {

constexpr std::size_t kRowsAtOnce = 4;
constexpr int kNotScored = -1;

// Two rows side by side in one register of the baseline instruction set.
using Pair = double __attribute__((vector_size(16)));

// Sums over one query and kRowsAtOnce rows of n values, each in index order. The rows are
// independent of one another, so nothing is reassociated.
struct RowSums {
  std::array<double, kRowsAtOnce> dot;
  std::array<double, kRowsAtOnce> square;
};

RowSums row_sums(const std::array<const double*, kRowsAtOnce>& rows, const double* query,
                 std::size_t n) {
  const double* const a = rows[0];
  const double* const b = rows[1];
  const double* const c = rows[2];
  const double* const d = rows[3];
  Pair dot_ab = {};
  Pair dot_cd = {};
  Pair square_ab = {};
  Pair square_cd = {};
  for (std::size_t i = 0; i != n; ++i) {
    const Pair q = {query[i], query[i]};
    const Pair ab = {a[i], b[i]};
    const Pair cd = {c[i], d[i]};
    dot_ab += ab * q;
    dot_cd += cd * q;
    square_ab += ab * ab;
    square_cd += cd * cd;
  }
  return {{dot_ab[0], dot_ab[1], dot_cd[0], dot_cd[1]},
          {square_ab[0], square_ab[1], square_cd[0], square_cd[1]}};
}

// Asks for the first two cache lines of a row that is scored soon; the hardware fetches the rest of
// it by itself. Rows lie apart in memory, and large dialogues fit no cache.
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
    const RowSums sums = row_sums(rows_, query_.data(), size_);
    std::array<double, kRowsAtOnce> scores;
    for (std::size_t r = 0; r != kRowsAtOnce; ++r) {
      scores[r] = sums.dot[r] / std::sqrt(sums.square[r]) / query_norm_;
    }
    for (std::size_t r = 0; r != count_; ++r) {
      // Exactly 0 also for a zero vector, whatever the division made of it.
      scores_[places_[r]] = sums.dot[r] == 0.0 ? 0.0 : scores[r];
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
  std::array<const double*, kRowsAtOnce> rows_{};
  std::array<std::size_t, kRowsAtOnce> places_{};
};

}  // namespace

ActiveRows find_rows(const VectorTable& vectors, const std::set<int>& active,
                     std::map<int, int>& rule_rows) {
  ActiveRows found;
  found.rule_ids.reserve(active.size());
  found.rows.reserve(active.size());
  auto entry = rule_rows.begin();
  for (const int rule_id : active) {
    // Mostly both tables hold the same ids, and the next entry is the one looked for.
    if (entry == rule_rows.end() || entry->first != rule_id) {
      entry = rule_rows.try_emplace(rule_id, 0).first;
    }
    const int row = entry->second;
    if (static_cast<std::size_t>(row) >= vectors.size()) {
      found.complete = false;
      found.outside = row;
      break;
    }
    found.rule_ids.push_back(rule_id);
    found.rows.push_back(row);
    ++entry;
  }
  return found;
}

std::vector<double> score_rows(const VectorTable& vectors, const std::vector<double>& query,
                               const std::vector<int>& rows) {
  std::vector<int> place_of_row(vectors.size(), kNotScored);
  std::vector<double> scores(rows.size());
  RowBatch batch(query, scores);
  for (std::size_t place = 0; place != rows.size(); ++place) {
    if (place + kRowsAtOnce < rows.size()) {
      prefetch(vectors[static_cast<std::size_t>(rows[place + kRowsAtOnce])]);
    }
    const auto row = static_cast<std::size_t>(rows[place]);
    if (place_of_row[row] == kNotScored) {
      place_of_row[row] = static_cast<int>(place);
      batch.add(vectors[row], place);
    }
  }
  batch.flush();
  for (std::size_t place = 0; place != rows.size(); ++place) {
    scores[place] =
        scores[static_cast<std::size_t>(place_of_row[static_cast<std::size_t>(rows[place])])];
  }
  return scores;
}

std::map<double, std::vector<int>> best_scores(const VectorTable& vectors,
                                               const std::vector<double>& query,
                                               const std::set<int>& active,
                                               std::map<int, int>& rule_rows, std::size_t limit) {
  const ActiveRows found = find_rows(vectors, active, rule_rows);
  if (!found.complete) {
    (void)vectors.at(static_cast<std::size_t>(found.outside));
  }
  const std::vector<double> scores = score_rows(vectors, query, found.rows);
  std::map<double, std::vector<int>> best;
  double lowest = 0.0;  // score of the lowest group, once there are `limit`
  bool dropped = false;
  for (std::size_t place = 0; place != scores.size(); ++place) {
    const double score = scores[place];
    if (best.size() == limit) {
      // A group once dropped never comes back: only better ones dropped it.
      if (score < lowest) {
        dropped = true;
        continue;
      }
      // An ordered map has a score that is no number in its lowest group, which is gone by then.
      if (std::isnan(score) && dropped) {
        continue;
      }
    }
    best[score].push_back(found.rule_ids[place]);
    if (best.size() > limit) {
      best.erase(best.begin());
      dropped = true;
    }
    lowest = best.begin()->first;
  }
  return best;
}

}  // namespace VX::Dialog::detail
