// The records of inference, and matrix files.
#include <sstream>

#include <gtest/gtest.h>

#include <velmora/matrix-files.hpp>
#include <velmora/wordsense-corpus.hpp>
#include <velmora/wordsense-model.hpp>

#include "kit/fixtures.hpp"

namespace VX::Dialog {
namespace {

// Runs in a folder of its own, so that paths in log lines are short.
struct MatrixFiles : testing::Test {
  MatrixFiles() { std::filesystem::current_path(folder.path()); }
  test::TemporaryFolder folder;
  test::LogCapture log;
};

std::string dump(const Eigen::MatrixXd& matrix) {
  std::ostringstream out;
  out << matrix.rows() << "x" << matrix.cols() << "\n" << matrix;
  return out.str();
}

TEST_F(MatrixFiles, ModelIsReadAsItStandsAndWrittenWithoutItsFactors) {
  folder.write("whole", "2\n0.5 0.25");
  folder.write("whole.conf", "3 1\n1 \n2 \n3 \n");  // the model says 2 rows, the matrix 1
  folder.write("bare", "7 word 8");
  wordsense_model model;
  EXPECT_TRUE(read_wordsense_model("whole", model));
  EXPECT_TRUE(read_wordsense_model("bare", model));
  EXPECT_FALSE(read_wordsense_model("none", model));
  EXPECT_EQ(log.records.size(), 5U);
  EXPECT_EQ(log.records[2].text, "read_mat_data() Cannot open file bare.conf");
  EXPECT_EQ(log.records[4].text, " read_wordsense_model() Cannot open file none");
  EXPECT_EQ(model.dim, 7);
  EXPECT_EQ(model.lambda, 0.0);
  EXPECT_EQ(model.missing_weight, 0.25);
  EXPECT_EQ(dump(model.word_factors), "1x3\n1 2 3");
  model.lambda = 0.1234567;
  EXPECT_TRUE(write_wordsense_model(std::string("new").data(), model));
  EXPECT_EQ(folder.read("new"), "7\n0.123457\n0.25\n");
  EXPECT_FALSE(std::filesystem::exists("new.conf"));
  Eigen::MatrixXd doubles{{0.1234567, 3}, {0.00001, 1e6}};
  Eigen::MatrixXi ints(0, 2);
  EXPECT_TRUE(write_mat_data("new", doubles));
  EXPECT_TRUE(write_mat_data(std::string("old").data(), ints));
  EXPECT_EQ(folder.read("new"), "2 2\n0.123457 1e-05 \n3 1e+06 \n");
  EXPECT_EQ(folder.read("old"), "2 0\n\n\n");
}

// What the dense readers give: each element is what extraction leaves in one variable. The integer
// reader fills a 2 x 2 matrix of ones.
void dense_twin(const std::string& text, Eigen::MatrixXd& matrix, Eigen::MatrixXi& ints) {
  std::istringstream in(text);
  int columns = 0, rows = 0;
  in >> columns >> rows;
  matrix.resize(rows, columns);
  double value = 0.0;
  for (int element = 0; element != rows * columns; ++element) {
    in >> value;
    matrix(element) = value;
    const int place = element / rows * 2 + element % rows;
    if (place < 4) {
      ints(place) = static_cast<int>(value);
    }
  }
}

TEST_F(MatrixFiles, DenseOnesReadAsAStreamWouldWhereverTheyAreCutOrBent) {
  const std::string text = "3 2\n1.5 -2.9 \n3e1 4 \n5 6 \n";
  std::vector<std::string> variants = {"1 3 7 8 9", "3 1 7 8 9"};
  for (std::size_t place = 0; place <= text.size(); ++place) {
    variants.push_back(text.substr(0, place));
    variants.push_back(text.substr(0, place) + "word" + text.substr(place));
  }
  for (const std::string& variant : variants) {
    std::string path = folder.write("matrix", variant);
    Eigen::MatrixXd matrix = Eigen::MatrixXd::Ones(5, 5), expected;
    Eigen::MatrixXi ints = Eigen::MatrixXi::Ones(2, 2), expected_ints = ints;
    EXPECT_TRUE(read_mat_data(path.data(), matrix));
    EXPECT_TRUE(read_mat_data(path.data(), ints));
    dense_twin(variant, expected, expected_ints);
    EXPECT_EQ(dump(matrix), dump(expected)) << variant;
    EXPECT_EQ(ints, expected_ints) << variant;
  }
}

TEST_F(MatrixFiles, SparseOnesAreReadInFullOnlyWhenEveryCellIsStored) {
  const std::string kOrder = "read_sparse_data() The word index should be in ascending order";
  const std::string kGaps = "read_sparse_data() no_values does not match with data_mat.nnz()";
  const std::tuple<const char*, const char*, test::Lines> kCases[] = {
      {"2 9 2 0 5 1 6 2 0 7 1 8", "2x2\n5 7\n6 8", {}},
      {"2 9 0 2 0 7 1 8", "2x2\n0 7\n0 8", {kGaps, "2 4"}},  // an empty block is a column
      {"3 9 1 0 5 2 0 6 7 9 1 1 8", "2x2\n5 6\n0 0", {}},    // outside: dropped, yet counted
      {"2 9 2 0 5 0 6", "2x2\n5 0\n0 0", {kOrder}},
      // Wherever the file ends, the unfinished block does not count.
      {"2 9 2 0 5 1", "2x2\n5 0\n0 0", {kGaps, "0 4"}},
      {"2000000000 9 2 0 5 1 6 ", "2x2\n5 0\n6 0", {kGaps, "2 4"}},
  };
  for (const auto& [text, stored, complaints] : kCases) {
    SCOPED_TRACE(text);
    log.records.clear();
    Eigen::SparseMatrix<double> matrix(2, 2);
    EXPECT_EQ(read_smat_data(folder.write("sparse", text), matrix), complaints.empty());
    EXPECT_EQ(dump(matrix), stored);
    test::Lines logged;
    for (const zu::log::Record& record : log.records) {
      logged.push_back(record.text);
    }
    EXPECT_EQ(logged, complaints);
  }
}

TEST(Corpus, WeighsWhatIsStored) {
  Eigen::SparseMatrix<double> data(2, 3);
  data.insert(0, 1) = 0.0;
  data.insert(1, 1) = -2.5;
  data.insert(1, 2) = 4.0;
  wordsense_corpus corpus;
  ASSERT_TRUE(initialize_wordsense_corpus(corpus, data));
  EXPECT_EQ(dump(corpus.weights_t), "3x2\n0 0\n1 1\n0 1");
  EXPECT_EQ(corpus.data_t_cols[1], Eigen::Vector3d(0, -2.5, 4));
  delete_wordsense_corpus(corpus);
  // The shape is exchanged, the coordinates are not; what is then outside is dropped.
  EXPECT_EQ(dump(transpose(data)), "3x2\n   0    0\n   0 -2.5\n   0    0");
}

}  // namespace
}  // namespace VX::Dialog
