// The records of inference, matrix files and prints.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <velmora/matrix-files.hpp>
#include <velmora/wordsense-corpus.hpp>
#include <velmora/wordsense-model.hpp>

#include "support/fixtures.hpp"

namespace VX::Dialog {
namespace {

// Runs in a folder of its own, so that paths in log lines are short.
struct MatrixFiles : testing::Test {
  MatrixFiles() { std::filesystem::current_path(folder.path()); }
  std::string log_text() const {
    std::ostringstream text;
    std::ranges::copy(log.lines(), std::ostream_iterator<std::string>(text, "\n"));
    return text.str();
  }
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
  EXPECT_TRUE(read_wordsense_model("whole", model) && read_wordsense_model("bare", model));
  EXPECT_FALSE(read_wordsense_model("none", model));
  EXPECT_EQ(log_text(),
            R"(4 LibVelmora.Model read_wordsense_model: read_wordsense_model() from whole
4 LibVelmora.Model read_wordsense_model: read_wordsense_model() from bare
2 LibVelmora.Corpus read_mat_data: read_mat_data() Cannot open file bare.conf
4 LibVelmora.Model read_wordsense_model: read_wordsense_model() from none
2 LibVelmora.Model read_wordsense_model:  read_wordsense_model() Cannot open file none
)");
  EXPECT_EQ(std::tie(model.dim, model.lambda, model.missing_weight), std::tuple(7, 0.0, 0.25));
  EXPECT_EQ(dump(model.word_factors), "1x3\n1 2 3");
  model.lambda = 0.1234567;
  EXPECT_TRUE(write_wordsense_model(std::string("new").data(), model));
  EXPECT_EQ(folder.read("new"), "7\n0.123457\n0.25\n");
  EXPECT_FALSE(std::filesystem::exists("new.conf"));
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
    EXPECT_TRUE(read_mat_data(path.data(), matrix) && read_mat_data(path.data(), ints));
    dense_twin(variant, expected, expected_ints);
    EXPECT_EQ(dump(matrix), dump(expected)) << variant;
    EXPECT_EQ(ints, expected_ints) << variant;
  }
}

TEST_F(MatrixFiles, DenseOnesAreWrittenColumnByColumn) {
  Eigen::MatrixXd matrix{{0.1234567, 3, -5}, {0.00001, 1e6, 6}};
  Eigen::MatrixXi ints(0, 2);
  EXPECT_TRUE(write_mat_data("doubles", matrix) &&
              write_mat_data(std::string("ints").data(), ints));
  EXPECT_EQ(folder.read("doubles"), "3 2\n0.123457 1e-05 \n3 1e+06 \n-5 6 \n");
  EXPECT_EQ(folder.read("ints"), "2 0\n\n\n");
}

TEST_F(MatrixFiles, SparseOnesAreReadInFullOnlyWhenEveryCellIsStored) {
  const std::string kSite = "2 LibVelmora.Corpus read_smat_data: ";
  const std::string kOrder =
      kSite + "read_sparse_data() The word index should be in ascending order\n";
  const std::string kGaps =
      kSite + "read_sparse_data() no_values does not match with data_mat.nnz()\n" + kSite;
  const std::tuple<const char*, const char*, std::string> kCases[] = {
      {"2 9 2 0 5 1 6 2 0 7 1 8", "2x2\n5 7\n6 8", ""},
      {"2 9 0 2 0 7 1 8", "2x2\n0 7\n0 8", kGaps + "2 4\n"},  // an empty block is a column
      {"3 9 1 0 5 2 0 6 7 9 1 1 8", "2x2\n5 6\n0 0", ""},     // outside: dropped, yet counted
      {"2 9 2 0 5 0 6", "2x2\n5 0\n0 0", kOrder},
      {"2 9 1 -1 5", "2x2\n0 0\n0 0", kOrder},
      {"2 9 2 0 5 word 6", "2x2\n5 0\n0 0", kOrder},  // no number: a 0
      {"-2 9 1 0 5", "2x2\n0 0\n0 0", kGaps + "0 4\n"},
      // Wherever the file ends, the unfinished block does not count.
      {"", "2x2\n0 0\n0 0", kGaps + "0 4\n"},
      {"2 9 2 0 5 1", "2x2\n5 0\n0 0", kGaps + "0 4\n"},
      {"2000000000 9 2 0 5 1 6 ", "2x2\n5 0\n6 0", kGaps + "2 4\n"},
  };
  for (const auto& [text, stored, complaint] : kCases) {
    SCOPED_TRACE(text);
    log.records.clear();
    Eigen::SparseMatrix<double> matrix(2, 2);
    EXPECT_EQ(read_smat_data(folder.write("sparse", text), matrix), complaint.empty());
    EXPECT_EQ(dump(matrix), stored);
    EXPECT_EQ(matrix.isCompressed(), complaint != kOrder || matrix.nonZeros() == 0);
    EXPECT_EQ(log_text(), complaint);
  }
}

TEST(Corpus, WeighsWhatIsStored) {
  Eigen::SparseMatrix<double> data(2, 3);
  data.insert(0, 1) = 0.0;
  data.insert(1, 1) = -2.5;
  data.insert(1, 2) = 4.0;
  wordsense_corpus corpus;
  delete_wordsense_corpus(corpus);  // nothing to release yet
  ASSERT_TRUE(initialize_wordsense_corpus(corpus, data));
  EXPECT_EQ(dump(corpus.weights_t), "3x2\n0 0\n1 1\n0 1");
  EXPECT_EQ(corpus.data_cols[1], Eigen::Vector2d(0, -2.5));
  EXPECT_EQ(corpus.weights_cols[1], Eigen::Vector2d(1, 1));
  EXPECT_EQ(corpus.data_t_cols[1], Eigen::Vector3d(0, -2.5, 4));
  EXPECT_EQ(corpus.weights_t_cols[0], Eigen::Vector3d(0, 1, 0));
  delete_wordsense_corpus(corpus);
  // The shape is exchanged, the places are not; what then lies outside goes.
  EXPECT_EQ(dump(transpose(data)), "3x2\n   0    0\n   0 -2.5\n   0    0");
}

TEST(Prints, LeaveOutWhatIsNotAboveZero) {
  const Eigen::VectorXd vector = Eigen::Vector4d(0.1234567, -1, 0, 2e6);
  testing::internal::CaptureStdout();
  print_vec_nnz(vector);
  print_vec_(vector);
  print_svec_nnz(vector.sparseView());
  print_mat_(vector.replicate(1, 2));
  print_smat_nnz(Eigen::MatrixXd(vector.replicate(1, 2)).sparseView());  // all that is stored
  std::cout << Eigen::Matrix2d{{1, 2}, {3, 0.1234567}}.format(HeavyFmt);
  const std::string line = "[0.123457 2e+06 ]\n", stored = "[0.123457 -1 2e+06 ]\n";
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            line + line + line + line + line + stored + stored +
                "[[        1,         2]\n [        3, 0.1234567]]");
}

}  // namespace
}  // namespace VX::Dialog
