// Model tables, folding of stem sets, weights and counts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/dictionary.hpp>
#include <velmora/frequencies.hpp>
#include <velmora/preprocess.hpp>
#include <velmora/term-matrix.hpp>
#include <velmora/tfidf.hpp>

#include "kit/fixtures.hpp"

namespace VX::Dialog {
namespace {

using testing::ElementsAre;
using Sentences = std::map<int, std::vector<std::string>>;
using Counts = std::map<std::string, int>;
using Weights = std::map<int, std::map<int, double>>;

TEST(ModelTables, EndAtTheFirstLineThatIsNoEntry) {
  const std::pair<const char*, Counts> kDictionaries[] = {
      {" go x\nstop\tnow\r\n", {{"go", 0}, {"stop", 1}}},     // first tokens
      {"go\nup\ngo\nin", {{"go", 2}, {"in", 3}, {"up", 1}}},  // a repeat keeps the later id
      {"go\n \t\r\nstop\n", {{"go", 0}}},                     // a line of blanks ends it
  };
  const std::pair<const char*, std::map<int, double>> kIdfs[] = {
      {" 1\t0.5 x\n0 1\n1 3", {{0, 1}, {1, 3}}},  // the later line wins
      {"3.5\n4x 2\n", {{3, 0.5}}},      // an int ends at its point, the value begins there
      {"1 2\n2 1e999\n3 4", {{1, 2}}},  // too large to be a value
  };
  const test::TemporaryFolder folder;
  std::string path = folder.path("table");
  EXPECT_EQ(get_word_ids(path), Counts()) << "no such file";
  EXPECT_EQ(load_idf(path), (std::map<int, double>())) << "no such file";
  for (const auto& [text, vocabulary] : kDictionaries) {
    folder.write("table", text);
    EXPECT_EQ(get_word_ids(path), vocabulary) << text;
  }
  for (const auto& [text, idf] : kIdfs) {
    folder.write("table", text);
    EXPECT_EQ(load_idf(path), idf) << text;
  }
}

TEST(Preprocess, GivesEqualStemSetsOneRow) {
  std::map<int, int> rows = {{1, 5}, {7, 5}};
  Sentences unique = {{1, {"stays"}}};
  preprocess({{"rare", 2}, {"b", 3}},
             {{-1, {}}, {3, {"b", "a", "b"}}, {7, {"a", "b"}}, {11, {"rare"}}}, 2, rows, unique);
  EXPECT_EQ(rows, (std::map<int, int>{{1, 5}, {3, 0}, {7, 0}, {11, 1}}));
  EXPECT_EQ(unique, (Sentences{{1, {"stays"}}, {3, {"b", "a", "b"}}, {11, {}}}));
}

TEST(Weighting, RunsFromStemsToColumnsAndBack) {
  const test::LogCapture log;
  std::map<int, std::vector<int>> word_ids = {{1, {8}}, {4, {8}}};
  word_indices({{4, {"b", "x", "a", "b"}}, {6, {"x"}}}, {{"a", 9}, {"b", 5}}, word_ids);
  Weights weights = {{2, {{1, 1.0}}}, {4, {{1, 1.0}}}};
  tfidf(word_ids, {{5, 2.5}, {8, 0.0}}, weights);
  EXPECT_EQ(weights, (Weights{{1, {{8, 0}}}, {2, {{1, 1}}}, {4, {{5, 5}, {9, 1}}}, {6, {}}}));

  // Columns go by position, an empty one counts, a weight of 0 is stored, and an id without a row
  // is not.
  Eigen::SparseMatrix<double> matrix(3, 3);
  read_smat_data_OPTIM({{3, {{0, 1.5}, {2, 0}}}, {7, {}}, {99, {{-2, 9}, {-1, 9}, {1, 4}}}},
                       matrix);
  EXPECT_EQ(matrix.nonZeros(), 3);
  EXPECT_THAT(log.lines(), ElementsAre("4 LibVelmora.Query tfidf: 9 does not exist",
                                       "2 LibVelmora.Query read_smat_data_OPTIM: The word index "
                                       "should be in ascending order"));
  std::vector<std::vector<double>> vectors = {{9}};
  mat2vec(matrix, vectors);
  EXPECT_THAT(vectors, ElementsAre(ElementsAre(9), ElementsAre(1.5, 0, 0), ElementsAre(0, 0, 0),
                                   ElementsAre(0, 4, 0)));
}

TEST(Frequencies, CountOccurrences) {
  const test::TemporaryFolder folder;
  std::map<int, std::string> lines = {{0, "old"}, {9, "stays"}};
  const std::string path = folder.write("text", " a  b\tc\n\na");
  EXPECT_EQ(getfreqs(path, lines), (Counts{{"a", 2}, {"b\tc", 1}}));
  EXPECT_EQ(lines, (std::map<int, std::string>{{0, " a  b\tc"}, {1, ""}, {2, "a"}, {9, "stays"}}));
}

}  // namespace
}  // namespace VX::Dialog
