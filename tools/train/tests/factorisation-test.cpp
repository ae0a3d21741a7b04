// The factorisation against its formula, written out with every zero of the matrix in place.
#include "factorisation.hpp"

#include <Eigen/LU>
#include <gtest/gtest.h>

#include "random.hpp"

namespace velmora::trainer {
namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::MatrixXf;
using Eigen::VectorXd;

struct Shape {
  const char* what;
  int dim;
  Index documents;
  Index words;
  int percent_stored;
  double missing_weight;
};

// Rows shorter and longer than dim, empty ones, and columns beyond one panel of the solver.
const Shape kShapes[] = {
    {"short rows", 12, 60, 40, 10, 0.01},        {"long rows", 5, 60, 40, 50, 0.01},
    {"more than one panel", 7, 700, 9, 80, 0.1}, {"absent words do not count", 6, 50, 30, 20, 0.0},
    {"all words count alike", 6, 50, 30, 20, 1}, {"one dimension", 1, 30, 20, 20, 0.01},
};

struct Problem {
  MatrixXd dense;  // N x V
  std::vector<double> weights;
  TrainingCorpus corpus;
  FactorisationSettings settings;
};

// Fixed random start: the shape tells one problem from another.
Problem make_problem(const Shape& shape) {
  Problem problem;
  problem.settings = {shape.dim, 2.0, shape.missing_weight, 1};
  problem.dense = MatrixXd::Zero(shape.documents, shape.words);
  SparseRows rows;
  for (Index document = 0; document != shape.documents; ++document) {
    for (Index word = 0; word != shape.words; ++word) {
      const std::uint64_t bits =
          random_bits(7, static_cast<std::uint64_t>(document * shape.words + word));
      if (static_cast<int>(bits % 100) < shape.percent_stored) {
        const float value = 1.0F + static_cast<float>(bits >> 32U & 0xffU) / 64.0F;
        problem.dense(document, word) = static_cast<double>(value);
        rows.column.push_back(static_cast<std::int32_t>(word));
        rows.value.push_back(value);
      }
    }
    rows.row_begin.push_back(rows.column.size());
    problem.weights.push_back(document % 3 == 0 ? 4.0 : document % 7 == 0 ? 0.0 : 1.0);
  }
  problem.corpus =
      make_training_corpus(rows, static_cast<std::size_t>(shape.words), problem.weights);
  return problem;
}

MatrixXf start_factors(const Problem& problem) {
  return first_word_factors(problem.settings.dim, problem.corpus.by_word.rows(), 1);
}

const auto no_report = [](double) {};

// The least squares problem of one side, row by row, with a weight for every place.
MatrixXd direct_side(const MatrixXd& dense, const MatrixXd& given, const VectorXd& column_weights,
                     const FactorisationSettings& settings) {
  MatrixXd result(given.rows(), dense.rows());
  for (Index row = 0; row != dense.rows(); ++row) {
    VectorXd weights = column_weights;
    for (Index column = 0; column != dense.cols(); ++column) {
      weights(column) *= dense(row, column) != 0.0 ? 1.0 : settings.missing_weight;
    }
    const MatrixXd system = given * weights.asDiagonal() * given.transpose() +
                            settings.lambda * MatrixXd::Identity(given.rows(), given.rows());
    result.col(row) = system.inverse() * (given * weights.cwiseProduct(dense.row(row).transpose()));
  }
  return result;
}

double direct_objective(const Problem& problem, const MatrixXd& words, const MatrixXd& documents) {
  double sum = problem.settings.lambda * words.squaredNorm();
  for (Index document = 0; document != problem.dense.rows(); ++document) {
    double of_document = problem.settings.lambda * documents.col(document).squaredNorm();
    for (Index word = 0; word != problem.dense.cols(); ++word) {
      const double value = problem.dense(document, word);
      const double error = words.col(word).dot(documents.col(document)) - value;
      of_document += (value != 0.0 ? 1.0 : problem.settings.missing_weight) * error * error;
    }
    sum += problem.weights[static_cast<std::size_t>(document)] * of_document;
  }
  return sum;
}

TEST(Factorisation, SweepAndObjectiveAreThoseOfTheFormula) {
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(shape.what);
    const Problem problem = make_problem(shape);
    MatrixXf words = start_factors(problem);
    const VectorXd weights =
        Eigen::Map<const VectorXd>(problem.weights.data(), problem.dense.rows());
    const MatrixXd documents = direct_side(problem.dense, words.cast<double>(),
                                           VectorXd::Ones(problem.dense.cols()), problem.settings);
    const MatrixXd expected_words =
        direct_side(problem.dense.transpose(), documents, weights, problem.settings);

    const double objective = run_sweep(problem.corpus, problem.settings, words, no_report);
    const double tolerance = 1e-4 * expected_words.cwiseAbs().maxCoeff();
    EXPECT_LT((words.cast<double>() - expected_words).cwiseAbs().maxCoeff(), tolerance);
    const double expected = direct_objective(problem, words.cast<double>(), documents);
    EXPECT_NEAR(objective, expected, 1e-5 * expected);
  }
}

}  // namespace
}  // namespace velmora::trainer
