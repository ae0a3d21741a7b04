// Fold-in of sentences, its helpers, and the updater.
#include <Eigen/LU>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/term-matrix.hpp>
#include <velmora/updater.hpp>

#include "kit/exported-chain.hpp"
#include "kit/fixtures.hpp"

namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;
using test::infer;

wordsense_model make_model(const MatrixXd& factors, double lambda, double missing_weight) {
  wordsense_model model;
  model.word_factors = factors;
  model.dim = static_cast<int>(factors.rows());
  model.lambda = lambda;
  model.missing_weight = missing_weight;
  return model;
}

// Every step as it is written down, with all words of the vocabulary in each.
VectorXd slow_fold_in(const Eigen::SparseVector<double>& x, wordsense_model model,
                      const MatrixXd& gram) {
  const VectorXd w = (VectorXd(x).array() != 0.0).cast<double>();
  const MatrixXd U = getNonZeros(model.word_factors, x);
  MatrixXd R = w.replicate(1, model.dim);
  const MatrixXd A = filterMat(R).array() - model.missing_weight;
  const MatrixXd B = A.cwiseProduct(U.transpose());
  const MatrixXd G = U * B;
  const MatrixXd T = (gram + G) + model.lambda * MatrixXd::Identity(model.dim, model.dim);
  const MatrixXd Y = MatrixXd(T.inverse()) * U;
  VectorXd v = VectorXd(x).cwiseProduct(w);
  return Y * filter_vec_(v);
}

TEST(Inference, EqualsItsStepsToTheLastBit) {
  for (unsigned seed = 1; seed != 200; ++seed) {
    std::srand(seed);  // Eigen draws from it too
    const auto draw = [](int limit) { return std::rand() % limit; };
    const int words = 1 + draw(60);
    const wordsense_model model =
        make_model(MatrixXd::Random(1 + draw(40), words), 0.01 * (1 + draw(300)), 0.01 * draw(101));
    const MatrixXd gram =
        model.missing_weight * (model.word_factors * model.word_factors.transpose());
    std::map<int, std::map<int, double>> weights = {{0, {}}};
    for (int word = 0; word != 20; ++word) {
      weights[10 * draw(4)][draw(words)] = 0.1 * (1 + draw(90));
    }
    Eigen::SparseMatrix<double> data(words, static_cast<Eigen::Index>(weights.size()));
    VX::Dialog::read_smat_data_OPTIM(weights, data);
    const MatrixXd latent = infer(data, model, gram);
    for (int column = 0; column != data.cols(); ++column) {
      EXPECT_EQ(latent.col(column), slow_fold_in(data.col(column), model, gram)) << "seed " << seed;
    }
  }
}

const MatrixXd kIdentity = MatrixXd::Identity(2, 2);

TEST(Inference, OfSmallSentencesByHand) {
  wordsense_model model = make_model(kIdentity, 0.5, 0.5);
  Eigen::SparseMatrix<double> data(4, 4);
  data.insert(0, 0) = 2.0;
  data.insert(0, 2) = 0.0;  // stored, so present: it stays paired with its own word
  data.insert(1, 2) = 3.0;
  data.insert(1, 3) = 3.0;
  data.insert(3, 3) = 9.0;  // no such column of the factors: adds nothing
  EXPECT_EQ(infer(data, model, 0.5 * kIdentity), (MatrixXd{{4.0 / 3.0, 0, 0, 0}, {0, 0, 2, 2}}));
  // Shapes that do not fit give zeros, a dimension of 0 or less gives no rows.
  EXPECT_EQ(infer(data, model, MatrixXd()), MatrixXd::Zero(2, 4));
  model.dim = -1;
  EXPECT_EQ(infer(data, model, kIdentity), MatrixXd(0, 4));
}

TEST(Filters, KeepTheirOddEnds) {
  MatrixXd matrix{{0, 1, 0}, {2, 3, 0}, {-4, 5, 6}};  // the first column decides: two rows
  EXPECT_EQ(filterMat(matrix), (MatrixXd{{2, 1, 6}, {-4, 3, 0}}));
  VectorXd vector = Eigen::Vector4d(0, -7, 1e-300, 3);
  EXPECT_EQ(filter_vec_(vector), Eigen::Vector3d(1e-300, 3, 0));  // -7 counts, and is left out
  EXPECT_EQ(filter_vec_2(Eigen::Vector3d(-7, 0, 3)), Eigen::Vector2d(-7, 0));
  Eigen::SparseVector<double> pattern(9);
  pattern.insert(1) = 0.0;  // stored: that decides, not the value
  pattern.insert(8) = 5.0;
  EXPECT_EQ(getNonZeros(matrix, pattern), (MatrixXd{{1, 0}, {3, 0}, {5, 0}}));
}

TEST(Updater, FoldsAllSentencesAsOneBagOfWords) {
  VX::Dialog::Stemmer stemmer(test::kLanguage);
  VX::Dialog::Updater updater({{"go", 0}, {"stop", 1}}, {}, {{0, 2.0}},
                              make_model(kIdentity, 0.5, 0.5), 0.5 * kIdentity);
  const test::LogCapture log;
  // "go" twice: weight 4 over 1.5; "stop" has no idf: its count, 1, over 1.5.
  const std::vector<double> expected = {4 * (1 / 1.5), 1 / 1.5};
  EXPECT_EQ(updater.update_vector({"go", "stop nowhere go"}, &stemmer), expected);
  EXPECT_EQ(updater.update_vector({"go go stop"}, &stemmer), expected);
  EXPECT_EQ(updater.update_vector({}, &stemmer), std::vector<double>(2));
  const std::string line = "4 LibVelmora.Query tfidf: 1 does not exist";
  EXPECT_THAT(log.lines(), testing::ElementsAre(line, line));
}

}  // namespace
