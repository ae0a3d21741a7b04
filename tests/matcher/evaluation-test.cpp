// Measures over expectations, worked out by hand.
#include <cmath>

#include <gtest/gtest.h>

#include <velmora/evaluation.hpp>

#include "kit/small-model.hpp"

namespace {

using namespace test;
using velmora::Evaluation;
using velmora::Expectation;
using velmora::Matcher;

// Counts words alone, so that scores are easy to foresee: 1 for the same words.
Matcher counting_matcher(std::vector<velmora::Rule> rules) {
  velmora::ScoreOptions options;
  options = {0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0};
  return {small_model(), std::move(rules), options};
}

TEST(Evaluation, CountsRanksFailuresAndConfusions) {
  const Matcher matcher = counting_matcher({{1, {"go"}}, {2, {"stop"}}, {3, {"walk"}}});
  // "go walk" is nearer to walk (idf 4) than to go (idf 2); "up" is in no rule, so all three tie.
  const std::vector<Expectation> expectations = {
      {1, "go"}, {1, "go walk"}, {2, "up"}, {3, "walk"}, {3, "go"}, {std::nullopt, "sleep"}};
  const Evaluation evaluation = velmora::evaluate(matcher, expectations, 2);
  EXPECT_EQ(evaluation.in_scope, 5U);
  EXPECT_EQ(evaluation.out_of_scope, 1U);
  EXPECT_DOUBLE_EQ(evaluation.first, 2.0 / 5.0);
  EXPECT_DOUBLE_EQ(evaluation.among_three, 1.0);
  // Ranks 1, 2, 3 (a tie counts against the rule), 1, and 3: rules 2 and 3 tie at 0 for "go".
  EXPECT_DOUBLE_EQ(evaluation.mean_reciprocal_rank, (1.0 + 0.5 + 1.0 / 3 + 1.0 + 1.0 / 3) / 5.0);
  EXPECT_DOUBLE_EQ(evaluation.area_under_roc.value(), 0.9);

  ASSERT_EQ(evaluation.failures.size(), 3U);
  EXPECT_EQ(evaluation.failures[0].expectation, 1U);
  EXPECT_EQ(evaluation.failures[0].rank, 2U);
  EXPECT_EQ(evaluation.failures[0].got.id, 3);
  EXPECT_NEAR(evaluation.failures[0].wanted_score, 2.0 / std::sqrt(20.0), 1e-7);
  EXPECT_EQ(evaluation.failures[1].rank, 3U);
  EXPECT_EQ(evaluation.failures[1].got.id, 1) << "another rule of the tie, not the expected one";
  ASSERT_EQ(evaluation.confusions.size(), 3U);
  EXPECT_EQ(evaluation.confusions[0].wanted, 1);
  EXPECT_EQ(evaluation.confusions[0].got, 3);

  // Right answers score 1 and 1; the others 0.89, 0, 1 and 0. From just below 1 on, both right
  // answers stay and one of four others gets through.
  EXPECT_GT(evaluation.threshold.score, 4.0 / std::sqrt(20.0));
  EXPECT_LT(evaluation.threshold.score, 1.0);
  EXPECT_DOUBLE_EQ(evaluation.threshold.keeps, 1.0);
  EXPECT_DOUBLE_EQ(evaluation.threshold.lets_through, 0.25);
}

TEST(Evaluation, ASentenceForNoRuleFailsWhenItPassesTheThreshold) {
  const Matcher matcher = counting_matcher({{1, {"go"}}, {2, {"stop"}}});
  const Evaluation evaluation =
      velmora::evaluate(matcher, {{1, "go"}, {2, "stop"}, {std::nullopt, "go"}});
  ASSERT_EQ(evaluation.failures.size(), 1U);
  EXPECT_EQ(evaluation.failures[0].expectation, 2U);
  EXPECT_EQ(evaluation.failures[0].rank, 0U);
  EXPECT_EQ(evaluation.failures[0].got.id, 1);
  EXPECT_TRUE(evaluation.confusions.empty());
}

TEST(Evaluation, NothingToMeasureGivesZeros) {
  const Evaluation evaluation = velmora::evaluate(counting_matcher({{1, {"go"}}}), {});
  EXPECT_EQ(evaluation.first, 0.0);
  EXPECT_EQ(evaluation.area_under_roc, std::nullopt);
}

TEST(Evaluation, AnUnknownRuleIsAnErrorWithItsLine) {
  EXPECT_EQ(error_of([] {
              velmora::evaluate(counting_matcher({{1, {"go"}}}), {{9, "go", 4}});
            }),
            "line 4: rule 9 is not among the rules: expected the id of a rule, or none");
}

}  // namespace
