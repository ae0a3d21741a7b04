// The derivative against differences of the sum, written out with inverses; and what the steps do.
#include "refinement.hpp"

#include <cmath>

#include <Eigen/LU>
#include <gtest/gtest.h>

namespace velmora::trainer {
namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::MatrixXf;
using Eigen::VectorXd;

constexpr int kDim = 4;
constexpr Index kWords = 7;
constexpr double kTemperature = 0.3;

VectorXd direct_unit(const Extract& extract, const MatrixXd& factors, const MatrixXd& constant_part,
                     double presence_weight) {
  MatrixXd system = constant_part;
  VectorXd right = VectorXd::Zero(kDim);
  for (std::size_t k = 0; k != extract.words.size(); ++k) {
    const VectorXd factor = factors.col(extract.words[k]);
    system += presence_weight * factor * factor.transpose();
    right += static_cast<double>(extract.values[k]) * factor;
  }
  return (system.inverse() * right).normalized();
}

double direct_sum(const ExtractPairs& pairs, const MatrixXd& factors, const MatrixXd& constant_part,
                  double presence_weight) {
  const std::size_t size = pairs.first.size();
  MatrixXd scores(size, size);
  for (std::size_t i = 0; i != size; ++i) {
    for (std::size_t j = 0; j != size; ++j) {
      const VectorXd first = direct_unit(pairs.first[i], factors, constant_part, presence_weight);
      const VectorXd second = direct_unit(pairs.second[j], factors, constant_part, presence_weight);
      scores(static_cast<Index>(i), static_cast<Index>(j)) = first.dot(second) / kTemperature;
    }
  }
  const MatrixXd powers = scores.array().exp();
  double sum = 0.0;
  for (Index i = 0; i != scores.rows(); ++i) {
    sum += std::log(powers.row(i).sum()) + std::log(powers.col(i).sum()) - 2.0 * scores(i, i);
  }
  return sum / static_cast<double>(size);
}

TEST(Refinement, GradientIsThatOfTheSum) {
  const MatrixXf factors = first_word_factors(kDim, kWords, 3);
  const MatrixXd constant_part =
      0.1 * gram_matrix(factors, 1) + 0.5 * MatrixXd::Identity(kDim, kDim);
  FixedFoldIn fold_in;
  fold_in.constant_inverse = constant_part.inverse().cast<float>();
  fold_in.presence_weight = 0.9F;
  ExtractPairs pairs;  // lengths below, at and above kDim; word 6 in none; word 2 in both of a pair
  pairs.first = {{{0, 2}, {1.0F, 2.0F}}, {{3}, {1.5F}}, {{1, 2, 3, 4, 5}, {1, 2, 1, 3, 1}}};
  pairs.second = {{{1, 2}, {0.5F, 2.0F}}, {{0, 3, 4, 5}, {1, 1.5F, 3, 1}}, {{5}, {1.0F}}};

  MatrixXf gradient = MatrixXf::Zero(kDim, kWords);
  const double sum = add_contrast_gradient(pairs, factors, fold_in, kTemperature, 2, gradient);

  const MatrixXd exact = factors.cast<double>();
  EXPECT_NEAR(sum, direct_sum(pairs, exact, constant_part, 0.9), 1e-4);
  constexpr double kStep = 1e-5;
  for (Index place = 0; place != exact.size(); ++place) {
    MatrixXd above = exact;
    MatrixXd below = exact;
    above(place) += kStep;
    below(place) -= kStep;
    const double slope = (direct_sum(pairs, above, constant_part, 0.9) -
                          direct_sum(pairs, below, constant_part, 0.9)) /
                         (2.0 * kStep);
    EXPECT_NEAR(static_cast<double>(gradient(place)), slope, 2e-3) << "place " << place;
  }
}

// Two subjects with words of their own and a word that both share.
TrainingCorpus two_subjects() {
  SparseRows rows;
  for (int document = 0; document != 12; ++document) {
    const std::int32_t first_word = document % 2 == 0 ? 0 : 3;
    for (std::int32_t word : {first_word, first_word + 1, first_word + 2, 6}) {
      rows.column.push_back(word);
      rows.value.push_back(word == 6 ? 0.5F : 2.0F);
    }
    rows.row_begin.push_back(rows.column.size());
  }
  return make_training_corpus(rows, kWords, std::vector<double>(12, 1.0));
}

double cosine_of(const MatrixXf& factors, Index first, Index second) {
  return static_cast<double>(factors.col(first).normalized().dot(factors.col(second).normalized()));
}

TEST(Refinement, JoinsTheWordsOfASubjectWhateverTheThreads) {
  const TrainingCorpus corpus = two_subjects();
  RefinementSettings settings;
  settings.steps = 150;
  settings.batch = 6;
  settings.rate = 0.02;
  MatrixXf start = first_word_factors(kDim, kWords, 3);
  start /= start.norm() / std::sqrt(static_cast<float>(kWords));
  int reported = 0;
  auto run = [&](int threads, double& lambda) {
    MatrixXf factors = start;
    refine(corpus, settings, 0.01, threads, 5, factors, lambda, [&](double) { ++reported; });
    return factors;
  };
  double lambda = 1.0;
  double lambda_of_three_threads = 1.0;
  const MatrixXf factors = run(1, lambda);
  EXPECT_EQ(run(3, lambda_of_three_threads), factors);
  EXPECT_EQ(lambda_of_three_threads, lambda);
  EXPECT_EQ(reported, 2 * settings.steps);
  EXPECT_NEAR(static_cast<double>(factors.squaredNorm()) / kWords, 1.0, 1e-5);
  EXPECT_GT(cosine_of(factors, 0, 1), 0.4);
  EXPECT_GT(cosine_of(factors, 3, 5), 0.4);
  EXPECT_LT(cosine_of(factors, 0, 4), 0.1);
}

}  // namespace
}  // namespace velmora::trainer
