// Ranking against a plain ordered map of all scores.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>

#include <gtest/gtest.h>

#include <velmora/ranking.hpp>
#include <velmora/similarity.hpp>

#include "ranking/rule-index.hpp"

namespace {

using namespace VX::Dialog;
using Ranked = std::map<double, std::vector<int>>;
using Vectors = std::vector<std::vector<double>>;

// True when the row of every active id lies in the table.
bool slow_get_max(const Vectors& vectors, const std::vector<double>& query, Ranked& ranked,
                  const std::set<int>& active, std::map<int, int>& rows) {
  for (const int rule_id : active) {
    const auto row = static_cast<std::size_t>(rows[rule_id]);
    if (row >= vectors.size()) {
      return false;
    }
    ranked[cosine(vectors[row], query)].push_back(rule_id);
  }
  return true;
}

// Equal scores, the sign of a zero included. Any NaN equals any other: its sign means nothing.
bool same_groups(const Ranked& first, const Ranked& second) {
  return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                    [](const auto& f, const auto& s) {
                      return f.second == s.second &&
                             (std::isnan(f.first) ? std::isnan(s.first)
                                                  : std::memcmp(&f.first, &s.first, 8) == 0);
                    });
}

TEST(Ranking, IsTheOrderedMapOfAllScores) {
  int complete = 0;
  for (unsigned seed = 0; seed != 3000; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto below = [&](int bound) { return static_cast<int>(random() % unsigned(bound)); };
    // Few values and mostly few dimensions, so that scores tie, cancel and overflow.
    const double values[] = {0, 1, -1, 2, 1, -0.0, 1e200, -1e-200, INFINITY, NAN};
    const int kinds = below(2) ? 6 : 10;
    const int dim = 1 + below(below(2) ? 3 : 40);
    const auto random_vector = [&](int size) {
      std::vector<double> vector(static_cast<std::size_t>(size));
      std::generate(vector.begin(), vector.end(), [&] { return values[below(kinds)]; });
      return vector;
    };
    Vectors vectors;
    for (int row = below(30); row >= 0; --row) {
      vectors.push_back(random_vector(below(8) ? dim : below(dim + 2)));
    }
    const std::vector<double> query = random_vector(dim);
    std::set<int> active;
    std::map<int, int> rows;
    for (int count = below(40); count > 0; --count) {
      const int rule_id = below(60) - 3;
      active.insert(rule_id);
      if (below(4)) {  // otherwise an id without a row
        rows[rule_id] = below(200) ? below(static_cast<int>(vectors.size()) + !below(40)) : -1;
      }
    }
    Ranked expected, ranked;
    auto slow_rows = rows, fast_rows = rows;
    const bool inside = slow_get_max(vectors, query, expected, active, slow_rows);
    complete += inside;
    const auto outside = [](const auto& run) {
      try {
        run();
        return false;
      } catch (const std::out_of_range&) {
        return true;
      }
    };
    EXPECT_NE(outside([&] { get_max(vectors, query, ranked, active, fast_rows); }), inside);
    EXPECT_TRUE(same_groups(ranked, expected));
    EXPECT_EQ(fast_rows, slow_rows);
    for (const std::size_t limit : {21U, 5U, 2U, 1U}) {
      fast_rows = rows;
      const auto kept = static_cast<std::ptrdiff_t>(std::min(limit, expected.size()));
      expected.erase(expected.begin(), std::prev(expected.end(), kept));
      Ranked best = expected;  // stays when there is nothing to rank
      const auto run = [&] {
        best = detail::RuleIndex().best_scores(vectors, query, active, fast_rows, limit);
      };
      EXPECT_NE(outside(run), inside);
      EXPECT_TRUE(same_groups(best, expected));
      EXPECT_EQ(fast_rows, slow_rows);
    }
  }
  EXPECT_GT(complete, 1000);
}

TEST(GetMax2, TakesIdsAsRowsAndEndsAtAFullMatch) {
  const Vectors vectors = {{1, 1}, {0, 1}, {}, {2, 0}, {-3, 0}, {1, 0}};
  const double slant = cosine({1, 1}, {1, 0});
  EXPECT_EQ(get_max2(vectors, {1, 0}, {0, 1, 2, 3, 4, 5}),
            (Ranked{{0.0, {1, 2}}, {slant, {0}}, {1.0, {3}}}));
  EXPECT_EQ(get_max2(vectors, {1, 0}, {5, 6}), (Ranked{{1.0, {5}}}));
  EXPECT_THROW(get_max2(vectors, {1, 0}, {4, 6}), std::out_of_range);
}

}  // namespace
