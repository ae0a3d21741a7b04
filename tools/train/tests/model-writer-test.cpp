// Scaling, rounding and the check of what was written.
#include "model-writer.hpp"

#include <gtest/gtest.h>

#include <velmora/wordsense-model.hpp>

#include "failure.hpp"
#include "kit/fixtures.hpp"

namespace velmora::trainer {
namespace {

using Eigen::MatrixXd;
using Eigen::MatrixXf;

// Lengths 16, 4 and 0. With row scaling 1/2 they become 4 and 2, whose mean square with that of the
// empty word is 20 / 3.
MatrixXf three_words() {
  return (MatrixXf(2, 3) << 16, 0, 0, 0, -4, 0).finished();
}

TEST(ScaleFactors, EvensOutLengthsAndKeepsTheirDirection) {
  const double root = std::sqrt(20.0 / 3.0);
  const ScaledFactors scaled = scale_factors(three_words(), {0.5, 3.0, 0.01, 6});
  const MatrixXd expected = (MatrixXd(2, 3) << 4 / root, 0, 0, 0, -2 / root, 0).finished();
  EXPECT_TRUE(scaled.word_factors.isApprox(expected)) << scaled.word_factors;
  EXPECT_EQ(scaled.lambda, 3.0);
}

TEST(ScaleFactors, IntegersAreClippedAndLambdaFollowsTheScale) {
  // 128 words in one dimension, one of them of length 2: the standard deviation is 1 after scaling.
  MatrixXf factors = MatrixXf::Constant(1, 128, 0.98809F);
  factors(0, 5) = -2.0F;
  factors(0, 9) = 0.1F;
  factors(0, 7) = 0.0F;
  const ScaledFactors two_digits = scale_factors(factors, {0.0, 3.0, 0.01, 2});
  EXPECT_EQ(two_digits.word_factors(0, 0), 12);  // 0.988 * 99 / 8
  EXPECT_EQ(two_digits.word_factors(0, 5), -25);
  EXPECT_EQ(two_digits.word_factors(0, 9), 1);
  EXPECT_EQ(two_digits.word_factors(0, 7), 0);
  EXPECT_NEAR(two_digits.lambda, 3.0 * 99 * 99 / 64.0, 1e-9);

  factors(0, 5) = -20.0F;  // now the standard deviation is about 2.02
  const ScaledFactors one_digit = scale_factors(factors, {0.0, 2.0, 0.01, 1});
  EXPECT_EQ(one_digit.word_factors(0, 5), -9);
  EXPECT_EQ(one_digit.word_factors(0, 0), 1);
  EXPECT_NEAR(one_digit.lambda, 2.0 * 81 / 16.0, 1e-9);
}

const std::tuple<const char*, const char*, const char*, bool> kTableCases[] = {
    {"whole", "go\nin\nup\n", "0 1\n1 0.5\n2 2\n", true},
    {"dictionary cut", "go\nin\n", "0 1\n1 0.5\n2 2\n", false},
    {"dictionary with a repeat", "go\ngo\nup\n", "0 1\n1 0.5\n2 2\n", false},
    {"idf cut", "go\nin\nup\n", "0 1\n1 0.5\n2 \n", false},
    {"idf of 0", "go\nin\nup\n", "0 1\n1 0\n2 2\n", false},
};

TEST(WriteModel, ChecksTheWordTablesAgainstTheFactors) {
  for (const auto& [what, dictionary, idf, good] : kTableCases) {
    for (int digits : {1, 2, 6}) {
      SCOPED_TRACE(testing::Message() << what << ", digits " << digits);
      const test::TemporaryFolder directory;
      directory.write("dictionary", dictionary);
      directory.write("idf", idf);
      const ModelSettings settings = {0.5, 3.0, 0.01, digits};
      const ScaledFactors factors = scale_factors(three_words(), settings);
      if (!good) {
        EXPECT_THROW(write_model(factors, settings, directory.path()), Failure);
        continue;
      }
      write_model(factors, settings, directory.path());
      wordsense_model model;
      ASSERT_TRUE(VX::Dialog::read_wordsense_model(directory.path("model"), model));
      EXPECT_EQ(model.dim, 2);
      EXPECT_EQ(model.missing_weight, 0.01);
      EXPECT_NEAR(model.lambda, factors.lambda, 1e-5 * factors.lambda);
      EXPECT_TRUE(model.word_factors.isApprox(factors.word_factors, 1e-5));
    }
  }
}

}  // namespace
}  // namespace velmora::trainer
