// The rule index against get_max, which scores every row; one index for many queries, while rules
// are switched on and off and the tables are written by hand.
#include "ranking/rule-index.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

#include <velmora/ranking.hpp>

#include "ranking/cosine.hpp"

namespace {

using namespace VX::Dialog;
using namespace VX::Dialog::detail;

class RandomTables {
 public:
  RandomTables(unsigned seed, int row_count, int dim) : random_(seed), dim_(dim) {
    kind_ = below(5);
    base_ = vector();
    for (int row = 0; row != row_count; ++row) {
      vectors.push_back(row_of_kind());
    }
    query = vector();
    switch_rules();
  }

  int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
  int any_row() { return below(static_cast<int>(vectors.size())); }

  std::vector<double> vector() {
    std::vector<double> numbers(static_cast<std::size_t>(dim_));
    std::generate(numbers.begin(), numbers.end(), [&] { return normal_(random_); });
    return numbers;
  }

  std::vector<double> row_of_kind() {
    const double odd[] = {0.0, 1e-170, 5e-324, 1e170, INFINITY, NAN};
    std::vector<double> row = kind_ == 1 && below(3) != 0 ? base_ : vector();
    if (kind_ == 2) {  // nearer to one another than any margin
      std::transform(base_.begin(), base_.end(), row.begin(), row.begin(),
                     [](double base, double noise) { return base + 1e-6 * noise; });
    } else if (kind_ == 3 && below(10) == 0) {
      std::fill(row.begin(), row.end(), odd[below(below(20) ? 4 : 6)]);
    } else if (kind_ == 4 && below(10) == 0) {
      row.resize(static_cast<std::size_t>(below(dim_ + 2)));
    }
    return row;
  }

  // Every row has a rule, some have several; some rules have no row.
  void switch_rules() {
    const int count = static_cast<int>(vectors.size());
    active.clear();
    for (int rule_id = -2; rule_id < count + count / 4; ++rule_id) {
      if (below(10) != 0) {
        active.insert(rule_id);
      }
      if (rule_id % 11 != 0 && !rows.contains(rule_id)) {
        rows[rule_id] = rule_id >= 0 && rule_id < count ? rule_id : any_row();
      }
    }
  }

  void write_by_hand() {
    switch (below(6)) {
      case 0:
        vectors[static_cast<std::size_t>(any_row())] = query;
        break;
      case 1:
        vectors[static_cast<std::size_t>(any_row())] = row_of_kind();
        break;
      case 2:
        std::swap(vectors.front(), vectors[static_cast<std::size_t>(any_row())]);
        break;
      case 3:
        vectors.push_back(row_of_kind());
        break;
      case 4:
        rows[*active.begin()] = any_row();
        break;
      default:
        active.erase(active.begin());
        active.insert(1'000'000 + below(9));
    }
  }

  VectorTable vectors;
  std::vector<double> query;
  std::set<int> active;
  RowTable rows;

 private:
  std::mt19937 random_;
  std::normal_distribution<double> normal_;
  int dim_;
  int kind_ = 0;
  std::vector<double> base_;
};

// Equal scores to the sign of a zero; a NaN has no sign to speak of.
bool same_groups(const ScoreGroups& first, const ScoreGroups& second) {
  return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                    [](const auto& f, const auto& s) {
                      return f.second == s.second &&
                             (std::isnan(f.first) ? std::isnan(s.first)
                                                  : std::memcmp(&f.first, &s.first, 8) == 0);
                    });
}

void expect_best(RuleIndex& index, RandomTables& tables, std::size_t limit) {
  RowTable rows = tables.rows;
  ScoreGroups expected;
  get_max(tables.vectors, tables.query, expected, tables.active, rows);
  expected.erase(
      expected.begin(),
      std::prev(expected.end(), static_cast<std::ptrdiff_t>(std::min(limit, expected.size()))));
  const ScoreGroups best =
      index.best_scores(tables.vectors, tables.query, tables.active, tables.rows, limit);
  EXPECT_TRUE(same_groups(best, expected));
  EXPECT_EQ(tables.rows, rows);
}

void expect_best_while_tables_change(unsigned seed, int row_count, int dim) {
  SCOPED_TRACE(testing::Message() << "seed " << seed << ", rows " << row_count << ", dim " << dim);
  RandomTables tables(seed, row_count, dim);
  RuleIndex index;
  for (int round = 0; round != 6; ++round) {
    for (const std::size_t limit : {21U, 11U, 1U}) {
      expect_best(index, tables, limit);
    }
    tables.query = round == 3 ? std::vector<double>(tables.query.size()) : tables.vector();
    expect_best(index, tables, 21);
    tables.write_by_hand();
    if (round % 2 == 1) {
      tables.switch_rules();
    }
  }
}

TEST(RuleIndex, FindsWhatScoringEveryRowFinds) {
  for (unsigned seed = 0; seed != 300; ++seed) {
    std::mt19937 random(seed);
    const int sizes[] = {1, 30, 200, 1500};
    const int dims[] = {1, 2, 3, 8, 33, 100};
    expect_best_while_tables_change(
        seed, 1 + static_cast<int>(random() % 10) * sizes[random() % 4] / 4, dims[random() % 6]);
  }
  expect_best_while_tables_change(1, 3'000, 300);  // too large for a whole fingerprint
  expect_best_while_tables_change(2, 100'000, 16);
}

TEST(RuleIndex, NoticesEveryNumberOfAUsualTable) {
  RandomTables tables(1, 1000, 100);
  RuleIndex index;
  for (int i = 0; i != 40; ++i) {
    expect_best(index, tables, 3);
    tables.vectors[static_cast<std::size_t>(tables.any_row())]
                  [static_cast<std::size_t>(tables.below(100))] = 500.0 * tables.below(3);
  }
}

TEST(RowIndex, BoundsEveryCosine) {
  for (const int dim : {1, 2, 7, 64, 300}) {
    SCOPED_TRACE(dim);
    RandomTables tables(static_cast<unsigned>(dim), 2000, dim);
    tables.vectors[7].assign(static_cast<std::size_t>(dim), 0.0);
    tables.vectors[8] = tables.query;
    const RowIndex index(tables.vectors);
    const auto coarse = index.coarse(tables.query);
    ASSERT_TRUE(coarse);
    std::vector<int> rows(index.size());
    std::iota(rows.begin(), rows.end(), 0);
    std::vector<int> dots(rows.size());
    index.dots(*coarse, rows, dots);
    for (const int row : rows) {
      const auto place = static_cast<std::size_t>(row);
      const double score = cosine_of(tables.vectors[place], tables.query);
      if (!std::binary_search(index.unbounded().begin(), index.unbounded().end(), row)) {
        EXPECT_LE(RowIndex::lower(dots[place], *coarse), score);
        EXPECT_GE(RowIndex::upper(dots[place], *coarse), score);
      }
    }
    EXPECT_LT(RowIndex::upper(0, *coarse), 1e-3);
  }
}

}  // namespace
