#include "rule-index.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <utility>

#include "cosine.hpp"
#include "scoring.hpp"

namespace VX::Dialog::detail {

// Why nothing is missed. Let `bar` lie two margins below the `count`-th highest dot. A row below
// the bar has a score below upper(bar), and each of the `count` rows above has at least that. So
// when the rows from the bar up give `limit` different scores of upper(bar) or more, the others
// have no part in the result. Where rows tie, `count` rows may give fewer scores than that; then
// more rows are taken, in the end all. Rows that tie with a rule of the result are in reach with
// it, so its groups are complete. Rows that are not bounded are scored in any case, and if a score
// is NaN, all are: the group that a NaN joins depends on every score before it.

namespace {

// Sums of the bits of the numbers, and sums of those sums, which tell their order; four by four, so
// that they run side by side.
std::uint64_t fingerprint_of(std::span<const double> numbers) {
  constexpr std::size_t kLanes = 4;
  std::array<std::uint64_t, kLanes> sums{};
  std::array<std::uint64_t, kLanes> sums_of_sums{};
  std::size_t d = 0;
  for (; d + kLanes <= numbers.size(); d += kLanes) {
    for (std::size_t lane = 0; lane != kLanes; ++lane) {
      sums[lane] += std::bit_cast<std::uint64_t>(numbers[d + lane]);
      sums_of_sums[lane] += sums[lane];
    }
  }
  for (; d != numbers.size(); ++d) {
    sums[d % kLanes] += std::bit_cast<std::uint64_t>(numbers[d]);
    sums_of_sums[d % kLanes] += sums[d % kLanes];
  }
  std::uint64_t fingerprint = 0;
  for (std::size_t lane = 0; lane != kLanes; ++lane) {
    fingerprint = std::rotl(fingerprint, 17) + sums[lane];
    fingerprint = std::rotl(fingerprint, 17) ^ sums_of_sums[lane];
  }
  constexpr std::uint64_t kMixing = 0x9E3779B97F4A7C15U;  // odd, with bits all over
  return fingerprint * kMixing;
}

// Takes the fingerprint of a table row by row.
class TableFingerprint {
 public:
  TableFingerprint(std::size_t rows, std::size_t dim)
      : whole_(rows * dim <= RuleIndex::kWholeNumbers) {}

  void add(const std::vector<double>& row) {
    const std::size_t count =
        whole_ ? row.size() : std::min(row.size(), RuleIndex::kSampledNumbers);
    const std::uint64_t of_row = fingerprint_of({row.data(), count}) + row.size();
    value_ = std::rotl(value_, 23) * 5 + (of_row ^ (of_row >> 32));  // 5: order counts
  }

  std::uint64_t value() const { return value_; }

 private:
  bool whole_;
  std::uint64_t value_ = 0;
};

std::uint64_t fingerprint_of(const VectorTable& vectors) {
  TableFingerprint fingerprint(vectors.size(), vectors.empty() ? 0 : vectors.front().size());
  for (const std::vector<double>& row : vectors) {
    fingerprint.add(row);
  }
  return fingerprint.value();
}

// Keeps the highest of the numbers that it is given.
class Highest {
 public:
  explicit Highest(std::size_t count) : count_(count) { kept_.reserve(count); }

  void add(int number) {
    if (kept_.size() == count_) {
      if (number <= lowest()) {
        return;
      }
      std::pop_heap(kept_.begin(), kept_.end(), std::greater<>());
      kept_.pop_back();
    }
    kept_.push_back(number);
    std::push_heap(kept_.begin(), kept_.end(), std::greater<>());
  }

  bool is_full() const { return kept_.size() == count_; }
  int lowest() const { return kept_.front(); }

 private:
  std::size_t count_;
  std::vector<int> kept_;  // a heap, the lowest in front
};

}  // namespace

void RuleIndex::renew(const VectorTable& vectors) {
  RowIndex coarse(vectors);
  coarse_ = std::move(coarse);
  fingerprint_ = fingerprint_of(vectors);
  take_rules({}, {});
  is_current_ = false;
}

ScoreGroups RuleIndex::best_scores(const VectorTable& vectors, const std::vector<double>& query,
                                   const std::set<int>& active, RowTable& rule_rows,
                                   std::size_t limit) {
  refresh(vectors, active, rule_rows);
  const auto coarse = coarse_.coarse(query);
  constexpr std::size_t kGrowth = 4;
  for (std::size_t count = limit; coarse && count < first_place_.size() / kGrowth;
       count *= kGrowth) {
    double reach = 0.0;
    const std::vector<std::size_t> entries = entries_in_reach(*coarse, count, reach);
    std::vector<int> rows(entries.size());
    std::transform(entries.begin(), entries.end(), rows.begin(),
                   [&](std::size_t entry) { return row_of(entry); });
    const std::vector<double> scores = score_rows(vectors, query, rows);
    if (std::any_of(scores.begin(), scores.end(), [](double score) { return std::isnan(score); })) {
      break;
    }
    std::vector<std::pair<int, double>> score_of_rule;
    for (std::size_t i = 0; i != entries.size(); ++i) {
      for (int place = first_place_[entries[i]]; place >= 0;
           place = next_place_[static_cast<std::size_t>(place)]) {
        score_of_rule.emplace_back(rule_ids_[static_cast<std::size_t>(place)], scores[i]);
      }
    }
    std::sort(score_of_rule.begin(), score_of_rule.end());  // ids are different
    BestGroups best(limit);
    for (const auto& [rule_id, score] : score_of_rule) {
      best.add(rule_id, score);
    }
    if (best.groups().size() == limit && best.groups().begin()->first >= reach) {
      return best.take();
    }
  }
  return best_of_all(vectors, query, limit);
}

ScoreGroups RuleIndex::best_of_all(const VectorTable& vectors, const std::vector<double>& query,
                                   std::size_t limit) const {
  const std::vector<double> scores = score_rows(vectors, query, rows_);
  BestGroups best(limit);
  for (std::size_t place = 0; place != scores.size(); ++place) {
    best.add(rule_ids_[place], scores[place]);
  }
  return best.take();
}

// Entries that may be among the `count` best, ascending, and a score that no other entry reaches.
std::vector<std::size_t> RuleIndex::entries_in_reach(const CoarseQuery& query, std::size_t count,
                                                     double& reach) const {
  constexpr std::size_t kBlock = 256;
  std::array<int, kBlock> rows;
  std::array<int, kBlock> dots;
  Highest highest(count);
  int bar = std::numeric_limits<int>::min();
  std::vector<std::pair<std::size_t, int>> dot_of_entry;
  for (std::size_t begin = 0; begin < first_place_.size(); begin += kBlock) {
    const std::size_t size = std::min(kBlock, first_place_.size() - begin);
    for (std::size_t i = 0; i != size; ++i) {
      rows[i] = row_of(begin + i);
    }
    coarse_.dots(query, {rows.data(), size}, {dots.data(), size});
    for (std::size_t i = 0; i != size; ++i) {
      if (dots[i] >= bar) {
        dot_of_entry.emplace_back(begin + i, dots[i]);
        highest.add(dots[i]);
        bar = highest.is_full() ? highest.lowest() - 2 * query.margin : bar;
      }
    }
  }
  reach = RowIndex::upper(bar, query);
  std::vector<std::size_t> entries;
  for (const auto& [entry, dot] : dot_of_entry) {
    if (dot >= bar) {
      entries.push_back(entry);
    }
  }
  for (const int row : coarse_.unbounded()) {
    const auto first = std::lower_bound(
        first_place_.begin(), first_place_.end(), row,
        [&](int place, int value) { return rows_[static_cast<std::size_t>(place)] < value; });
    if (first != first_place_.end() && rows_[static_cast<std::size_t>(*first)] == row) {
      entries.push_back(static_cast<std::size_t>(first - first_place_.begin()));
    }
  }
  std::sort(entries.begin(), entries.end());
  entries.erase(std::unique(entries.begin(), entries.end()), entries.end());
  return entries;
}

int RuleIndex::row_of(std::size_t entry) const {
  return rows_[static_cast<std::size_t>(first_place_[entry])];
}

const std::vector<double>& RuleIndex::vector_of(const VectorTable& vectors,
                                                std::size_t entry) const {
  return vectors[static_cast<std::size_t>(row_of(entry))];
}

void RuleIndex::refresh(const VectorTable& vectors, const std::set<int>& active,
                        RowTable& rule_rows) {
  if (tables_are_trusted_ && is_current_) {
    return;
  }
  if (vectors.size() == coarse_.size() && has_rules_of(active, rule_rows)) {
    if (fingerprint_of_active(vectors) == active_fingerprint_) {
      is_current_ = true;
      return;
    }
    renew(vectors);
  }
  is_current_ = false;
  ActiveRows found = find_rows(vectors, active, rule_rows);
  if (!found.complete) {
    (void)vectors.at(static_cast<std::size_t>(found.outside));
  }
  if (vectors.size() != coarse_.size() || fingerprint_of(vectors) != fingerprint_) {
    renew(vectors);
  }
  take_rules(std::move(found.rule_ids), std::move(found.rows));
  active_fingerprint_ = fingerprint_of_active(vectors);
  is_current_ = true;
}

// True when looking the active rules up would give the same rules and rows, and add no entry.
//
// Each step of a walk through an ordered table waits for the memory of the step before. Several
// walks side by side wait together.
bool RuleIndex::has_rules_of(const std::set<int>& active, const RowTable& rule_rows) const {
  if (active.size() != rule_ids_.size()) {
    return false;
  }
  struct Walk {
    std::size_t place;
    std::set<int>::const_iterator rule;
    RowTable::const_iterator entry;
  };
  constexpr std::size_t kWalks = 8;
  const std::size_t length = (rule_ids_.size() + kWalks - 1) / kWalks;
  std::vector<Walk> walks;
  for (std::size_t place = 0; place < rule_ids_.size(); place += length) {
    walks.push_back({place, active.find(rule_ids_[place]), rule_rows.find(rule_ids_[place])});
  }
  for (std::size_t step = 0; step != length; ++step) {
    for (Walk& walk : walks) {
      if (walk.place == rule_ids_.size()) {
        continue;  // the last walk may be shorter
      }
      const int rule_id = rule_ids_[walk.place];
      if (walk.rule == active.end() || *walk.rule != rule_id) {
        return false;
      }
      if (walk.entry == rule_rows.end() || walk.entry->first != rule_id) {
        walk.entry = rule_rows.find(rule_id);  // rules between the two are not active
      }
      if (walk.entry == rule_rows.end() || walk.entry->second != rows_[walk.place]) {
        return false;
      }
      ++walk.place;
      ++walk.rule;
      ++walk.entry;
    }
  }
  return true;
}

void RuleIndex::take_rules(std::vector<int> rule_ids, std::vector<int> rows) {
  std::vector<int> next_place(rows.size());
  std::vector<int> first_of_row(coarse_.size(), -1);
  for (std::size_t place = rows.size(); place-- != 0;) {
    int& first = first_of_row[static_cast<std::size_t>(rows[place])];
    next_place[place] = std::exchange(first, static_cast<int>(place));
  }
  std::erase(first_of_row, -1);
  first_of_row.shrink_to_fit();
  rule_ids_ = std::move(rule_ids);
  rows_ = std::move(rows);
  next_place_ = std::move(next_place);
  first_place_ = std::move(first_of_row);
}

std::uint64_t RuleIndex::fingerprint_of_active(const VectorTable& vectors) const {
  constexpr std::size_t kAhead = 16;  // rows to ask the memory for before they are needed
  TableFingerprint fingerprint(first_place_.size(), coarse_.dim());
  for (std::size_t entry = 0; entry != first_place_.size(); ++entry) {
    __builtin_prefetch(
        vector_of(vectors, std::min(entry + kAhead, first_place_.size() - 1)).data());
    fingerprint.add(vector_of(vectors, entry));
  }
  return fingerprint.value();
}

}  // namespace VX::Dialog::detail
