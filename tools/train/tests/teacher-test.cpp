// A teacher's vectors: their file, the regression that follows them, and models side by side.
#include <cstring>

#include <Eigen/LU>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "failure.hpp"
#include "join.hpp"
#include "kit/fixtures.hpp"
#include "random.hpp"
#include "regression.hpp"
#include "vector-file.hpp"

namespace velmora::trainer {
namespace {

using Eigen::MatrixXd;
using Numbers = std::vector<float>;

std::string npy(const std::string& description, const std::string& bytes) {
  std::string header = "{'descr': " + description + ", }";
  header.resize(118, ' ');
  return std::string("\x93NUMPY\x01\x00\x76\x00", 10) + header + bytes;
}

std::string float_bytes(const Numbers& numbers) {
  std::string bytes(numbers.size() * sizeof(float), '\0');
  std::memcpy(bytes.data(), numbers.data(), bytes.size());
  return bytes;
}

std::string float_file(std::size_t rows, std::size_t columns, const Numbers& numbers) {
  return npy("'<f4', 'fortran_order': False, 'shape': (" + std::to_string(rows) + ", " +
                 std::to_string(columns) + ")",
             float_bytes(numbers));
}

const std::string kBytes = "'|i1', 'fortran_order': False, 'shape': (2, 3)";

TEST(VectorFile, ReadsIntegersAndFloats) {
  const test::TemporaryFolder folder;
  VectorFile integers(folder.write("i", npy(kBytes, std::string("\x01\xff\x00\x7f\x80\x02", 6))));
  VectorFile floats(folder.write("f", float_file(1, 2, {0.5F, -2.0F})));
  Numbers row(3);
  integers.read_row(row);
  EXPECT_EQ(row, (Numbers{1, -1, 0}));
  integers.read_row(row);
  EXPECT_EQ(row, (Numbers{127, -128, 2}));
  row.resize(2);
  floats.read_row(row);
  EXPECT_EQ(row, (Numbers{0.5F, -2.0F}));
}

TEST(VectorFile, RefusesWhatIsNoSuchMatrix) {
  const test::TemporaryFolder folder;
  const std::pair<std::string, const char*> cases[] = {
      {"text", "ends too early"},
      {"some text, no vectors", "is not a file of numpy.save"},
      {npy("'<f8', 'fortran_order': False, 'shape': (2, 3)", ""), "int8 or float32"},
      {npy("'<f4', 'fortran_order': True, 'shape': (2, 3)", ""), "in C order"},
      {npy("'<f4', 'fortran_order': False, 'shape': (6,)", ""), "does not hold a matrix"},
      {npy(kBytes, "ab"), "ends too early"},
      {float_file(1, 3, {0, NAN, 0}), "not finite"},
  };
  for (const auto& [content, why] : cases) {
    SCOPED_TRACE(why);
    std::string said;
    try {
      VectorFile file(folder.write("file", content));
      Numbers row(3);
      file.read_row(row);
    } catch (const Failure& failure) {
      said = failure.what();
    }
    EXPECT_THAT(said, testing::HasSubstr(why));
  }
}

const std::map<std::string, std::int32_t> kWords = {{"go", 0}, {"in", 1}, {"up", 2}};

TaughtTexts read_texts(const test::TemporaryFolder& folder, const std::string& corpus,
                       const std::string& vectors, double mean_share = 1.0) {
  TeacherInput input;
  input.corpus.files = {folder.write("corpus", corpus)};
  input.corpus.stemmed = true;
  input.vectors = folder.write("vectors", vectors);
  input.label_weights = {{"twice", 2.0}, {"never", 0.0}};
  input.mean_share = mean_share;
  return read_taught_texts(input, kWords, {3.0, 4.0, 1.0}, [](double) {});
}

TEST(TaughtTexts, HoldLinesWithAVectorAndKnownWords) {
  const test::TemporaryFolder folder;
  // The mean of the four vectors at length 1 is (0, 1/2), which leaves (1, -1/2), (-1, -1/2),
  // (0, 1/2) and (0, 1/2).
  const TaughtTexts texts =
      read_texts(folder, "a\tin go go\ntwice\tgo\na\tup\na\tup no\nnever\tup\n",
                 float_file(5, 2, {2, 0, -3, 0, 0, 0, 0, 1, 0, 7}));
  EXPECT_EQ(texts.rows.row_begin, (std::vector<std::size_t>{0, 2, 3}));
  EXPECT_EQ(texts.rows.column, (std::vector<std::int32_t>{0, 1, 0}));
  EXPECT_EQ(texts.rows.value, (Numbers{0.6F, 0.8F, 1.0F}));
  EXPECT_EQ(texts.weights, (Numbers{1, 2}));
  const double x = 2 / std::sqrt(5.0);
  const double y = -1 / std::sqrt(5.0);
  const MatrixXd expected =
      (MatrixXd(3, 2) << 0.6 * x - 2 * x, 0.6 * y + 2 * y, 0.8 * x, 0.8 * y, 0, 0).finished();
  EXPECT_TRUE(texts.products.cast<double>().isApprox(expected, 1e-6)) << texts.products;
}

TEST(TaughtTexts, LoseAShareOfTheMean) {
  const test::TemporaryFolder folder;
  // The mean of (1, 0) and (0, 1) is (1/2, 1/2). Twice of it leaves (0, -1) and (-1, 0).
  const std::pair<double, MatrixXd> cases[] = {
      {0.0, (MatrixXd(3, 2) << 1, 0, 0, 1, 0, 0).finished()},
      {2.0, (MatrixXd(3, 2) << 0, -1, -1, 0, 0, 0).finished()},
  };
  for (const auto& [share, expected] : cases) {
    const TaughtTexts texts = read_texts(folder, "go\nin\n", float_file(2, 2, {1, 0, 0, 1}), share);
    EXPECT_TRUE(texts.products.cast<double>().isApprox(expected, 1e-6)) << texts.products;
  }
}

TEST(TaughtTexts, NeedAVectorForEachLine) {
  const test::TemporaryFolder folder;
  EXPECT_THROW(read_texts(folder, "go\nin\n", float_file(1, 1, {1})), Failure);
  EXPECT_THROW(read_texts(folder, "go\n", float_file(2, 1, {1, 2})), Failure);
  EXPECT_THROW(read_texts(folder, "go\nno\n", float_file(2, 1, {0, -1})), Failure);
}

constexpr Eigen::Index kVocabulary = 60;
constexpr Eigen::Index kTaughtDim = 40;

float draw(std::uint64_t place) {
  return random_normal(5, place);
}

// Random texts of two to five words each, and the same as dense matrices.
struct RandomTexts {
  TaughtTexts texts;
  MatrixXd x = MatrixXd::Zero(300, kVocabulary);
  MatrixXd weighted = x;  // AX
};

RandomTexts random_texts() {
  RandomTexts result;
  for (Eigen::Index text = 0; text != result.x.rows(); ++text) {
    for (std::int32_t word = static_cast<std::int32_t>(text % 11); word < kVocabulary;
         word += 13 + static_cast<std::int32_t>(text % 5)) {
      result.texts.rows.column.push_back(word);
      result.texts.rows.value.push_back(draw(static_cast<std::uint64_t>(text * 64 + word)));
      result.x(text, word) = static_cast<double>(result.texts.rows.value.back());
    }
    result.texts.rows.row_begin.push_back(result.texts.rows.column.size());
    result.texts.weights.push_back(static_cast<float>(1 + text % 3));
    result.weighted.row(text) = result.x.row(text) * static_cast<double>(1 + text % 3);
  }
  result.texts.products =
      RowMatrix::NullaryExpr(kVocabulary, kTaughtDim, [](Eigen::Index word, Eigen::Index column) {
        return column == 3 ? 0.0F : draw(static_cast<std::uint64_t>(90000 + word * 64 + column));
      });
  return result;
}

TEST(WordVectors, SolveTheRidgeRegression) {
  const RandomTexts random = random_texts();
  const RowMatrix vectors = word_vectors(random.texts, 0.5, 1, [](double) {});
  const MatrixXd system =
      random.x.transpose() * random.weighted + 0.5 * MatrixXd::Identity(kVocabulary, kVocabulary);
  const MatrixXd direct = system.inverse() * random.texts.products.cast<double>();
  EXPECT_TRUE(vectors.cast<double>().isApprox(direct, 1e-3));
  EXPECT_TRUE(vectors.col(3).isZero(0.0F));
  EXPECT_EQ(word_vectors(random.texts, 0.5, 3, [](double) {}), vectors);
}

TEST(PrincipalFactors, TurnTheVectorsAndKeepTheStrongestDirections) {
  const RowMatrix vectors = random_texts().texts.products;
  const std::vector<double> idf(kVocabulary, 2.0);
  const Eigen::MatrixXf all = principal_factors(vectors, idf, 100);
  ASSERT_EQ(all.rows(), kTaughtDim);
  EXPECT_TRUE((all.transpose() * all).isApprox(vectors * vectors.transpose(), 1e-4F));
  const Eigen::VectorXf strength = all.rowwise().squaredNorm();
  EXPECT_TRUE(std::is_sorted(strength.begin(), strength.end(), std::greater<>()));
  EXPECT_EQ(principal_factors(vectors, idf, 7), all.topRows(7));
}

TEST(ShortWords, GetSignsOfTheirOwnUpToTheLeastLength) {
  Eigen::MatrixXf factors = Eigen::MatrixXf::Zero(64, 4);  // mean square length 4
  factors(0, 0) = std::sqrt(15.36F);
  factors(1, 1) = 0.8F;
  const Eigen::MatrixXf before = factors;
  tell_apart_short_words(factors, 0.5, 1);
  EXPECT_EQ(factors.col(0), before.col(0));
  const Eigen::MatrixXf added = (factors - before).rightCols(3).cwiseAbs();
  EXPECT_TRUE(added.col(0).isConstant(0.6F / 8.0F, 1e-5F));
  EXPECT_TRUE(added.rightCols(2).isConstant(1.0F / 8.0F));
  EXPECT_LT(std::abs(factors.col(2).dot(factors.col(3))), 0.5F);
}

TEST(JoinFactors, BringsEachModelToItsWeight) {
  const MatrixXd first = (MatrixXd(1, 2) << 10, -10).finished();
  const MatrixXd second = (MatrixXd(2, 2) << 0, 2, 0, 2).finished();  // mean square length 4
  const Eigen::MatrixXf expected = (Eigen::MatrixXf(3, 2) << 3, -3, 0, 0.5F, 0, 0.5F).finished();
  EXPECT_EQ(join_factors({first, second}, {3.0, 0.5}), expected);
  EXPECT_THROW(join_factors({first, MatrixXd::Zero(1, 2)}, {1.0, 1.0}), Failure);
  EXPECT_THROW(join_factors({first, MatrixXd::Ones(1, 3)}, {1.0, 1.0}), Failure);
}

}  // namespace
}  // namespace velmora::trainer
