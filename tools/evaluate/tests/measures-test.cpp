// The figures of velmora-evaluate against cases worked by hand.
#include "measures.hpp"

#include <gtest/gtest.h>

namespace {

struct CorrelationCase {
  const char* what;
  std::vector<double> first;
  std::vector<double> second;
  double pearson;
  double spearman;
};

const CorrelationCase kCorrelations[] = {
    {"a line", {1, 2, 3}, {10, 20, 30}, 1.0, 1.0},
    {"falling", {1, 2, 3}, {3, 2, 1}, -1.0, -1.0},
    // Deviations -1 0 1 and -3 -2 5: 8 / sqrt(2 * 38).
    {"rising, but no line", {1, 2, 3}, {0, 1, 8}, 0.917663, 1.0},
    // Ranks 1.5 1.5 3 and 1 2 3: deviations -.5 -.5 1 and -1 0 1: 1.5 / sqrt(1.5 * 2).
    {"equal values share a rank", {4, 4, 9}, {4, 5, 6}, 0.866025, 0.866025},
    {"no variation", {1, 1, 1}, {1, 2, 3}, 0.0, 0.0},
    {"nothing", {}, {}, 0.0, 0.0},
};

TEST(Measures, Correlations) {
  for (const CorrelationCase& c : kCorrelations) {
    SCOPED_TRACE(c.what);
    EXPECT_NEAR(pearson(c.first, c.second), c.pearson, 1e-6);
    EXPECT_NEAR(spearman(c.first, c.second), c.spearman, 1e-6);
  }
}

TEST(Measures, AreaUnderRocCountsWonComparisons) {
  EXPECT_EQ(area_under_roc({0.9, 0.8}, {0.1, 0.2, 0.3}), 1.0);
  EXPECT_EQ(area_under_roc({0.1}, {0.9}), 0.0);
  // 0.5 wins over 0.4, ties with 0.5, loses to 0.6; 0.7 wins all three.
  EXPECT_EQ(area_under_roc({0.5, 0.7}, {0.4, 0.5, 0.6}), 4.5 / 6);
  EXPECT_EQ(area_under_roc({}, {0.5}), 0.5);
}

TEST(Measures, RanksAndConfusions) {
  const std::vector<Outcome> outcomes = {{1, "a", "a", 0.9}, {2, "a", "b", 0.8},
                                         {4, "a", "c", 0.7}, {0, "b", "c", 0.6},
                                         {3, "a", "c", 0.5}, {1, "c", "c", 1.0}};
  const RankingFigures figures = ranking_figures(outcomes);
  EXPECT_DOUBLE_EQ(figures.top1, 2.0 / 6);
  EXPECT_DOUBLE_EQ(figures.top3, 4.0 / 6);
  EXPECT_DOUBLE_EQ(figures.mean_reciprocal_rank, (1 + 0.5 + 0.25 + 0 + 1.0 / 3 + 1) / 6);

  const std::vector<Confusion> confusions = worst_confusions(outcomes, 2);
  ASSERT_EQ(confusions.size(), 2u);
  EXPECT_EQ(confusions[0].wanted + confusions[0].got, "ac");
  EXPECT_EQ(confusions[0].count, 2);
  EXPECT_EQ(confusions[1].wanted + confusions[1].got, "ab");
}

}  // namespace
