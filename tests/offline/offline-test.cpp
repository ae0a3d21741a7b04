// The corpus tools as a chain of files, and similarities.
#include <stdexcept>

#include <gtest/gtest.h>

#include <velmora/offline.hpp>
#include <velmora/similarity.hpp>

#include "kit/fixtures.hpp"

namespace VX::Dialog {
namespace {

// Runs in a folder of its own, with a quiet log.
struct Offline : testing::Test {
  Offline() { std::filesystem::current_path(folder.path()); }
  test::TemporaryFolder folder;
  test::LogCapture log;
};

TEST_F(Offline, ChainCarriesACorpusToASparseMatrixFile) {
  folder.write("text", "  c a   c\n\n b b");
  folder.write("dictionary", "x\na\nb\na\nc\n");
  folder.write("idf", "4 0.123456789\n3 1e6\n2\n");
  for (const int threshold : {0, 1, 1000}) {
    rm_infreq("text", "text", threshold);
    EXPECT_EQ(folder.read("text"), "c a c \n\nb b \n");
  }
  EXPECT_EQ(index("text", "rows", "dictionary"), 4);
  EXPECT_EQ(folder.read("rows"), "4 3 4 \n\n2 2 \n");
  tfidf("rows", "idf", false, true, true, "rows");
  EXPECT_EQ(folder.read("rows"), "3 1e+06 4 0.246914 \n\n2 2 \n");
  cpp_data_format("rows", "rows", -5);
  EXPECT_EQ(folder.read("rows"), "3 -5\n2 3 1e+06 4 0.246914 \n0 \n1 2 2 \n");
  folder.write("rows",
               "1 2 3\n1 2 x 3 4");  // a line counts up to the first token that is not a number
  EXPECT_EQ(read_data("rows")[1], (std::map<int, double>{{1, 1}, {2, 1}}));
}

TEST_F(Offline, IndexEndsAtTheFirstWordOutsideTheDictionary) {
  folder.write("dictionary", "a\nb\n");
  folder.write("text", "a b\nb a\r\n");
  EXPECT_THROW(index("text", "ids", "dictionary"), std::out_of_range);
  EXPECT_EQ(folder.read("ids"), "0 1 \n1 ");
}

TEST_F(Offline, SimilaritiesCompareLinesTwoByTwo) {
  const std::pair<const char*, const char*> kCases[] = {
      {"1 2\n", ""},  // a header, whatever it holds
      {"x\n1 2\n2 1\n1 1\n1 2", "0.8\n0.948683298050514\n"},
      {"x\nword 1\n1\n1 2\n1\n", "0\n0\n"},  // a shorter second vector
      {"x\n3 4\n", "0\n"},  // no partner: an empty vector, or itself when no newline ends it
      {"x\n3 4", "1\n"},
  };
  for (const auto& [text, similarities] : kCases) {
    folder.write("pairs", text);
    testing::internal::CaptureStdout();
    get_sim("pairs", "out");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\n caclulating similarities \n");
    EXPECT_EQ(folder.read("out"), similarities) << text;
  }
}

}  // namespace
}  // namespace VX::Dialog
