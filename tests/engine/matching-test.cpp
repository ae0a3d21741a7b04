// Compilation, activation, matching and word distances, on the small model.
#include <set>

#include <gtest/gtest.h>

#include "engine/velmora-private.hpp"
#include "kit/fixtures.hpp"

namespace {

using namespace VX::Dialog;
using namespace test;
using Ids = std::set<int>;

class Engine : public testing::Test {
 protected:
  Engine() { give_model(engine, folder); }
  Matches match(const std::string& sentence) {
    Matches matches;
    EXPECT_EQ(engine.xMatchInput(sentence, matches), 1);
    return matches;
  }

  TemporaryFolder folder;
  LogCapture log;
  VelmoraPrivate engine;
  Rules rules = {
      {3, {"go up", "up go"}}, {5, {"walk"}}, {7, {"up, go lamp"}}, {9, {"lamp"}}, {11, {"go"}}};
};

TEST_F(Engine, CompilesEachStemSetOnce) {
  EXPECT_TRUE(engine.xLoadDialogVectors(rules));
  const Rules stems = {{3, {"go", "up"}}, {5, {"walk"}}, {7, {"go", "up"}}, {9, {}}, {11, {"go"}}};
  EXPECT_EQ(rules, stems);
  EXPECT_EQ(engine.fRuleWords, stems);
  EXPECT_EQ(engine.fRuleRows, (std::map<int, int>{{3, 0}, {5, 1}, {7, 0}, {11, 2}}));
  EXPECT_EQ(engine.fRuleFreqs, (std::map<std::string, int>{{"go", 3}, {"up", 2}, {"walk", 1}}));
  EXPECT_EQ(engine.getActive_rules(), Ids());
  // Worked by hand from the table of the model; walk has no idf and weighs 1.
  EXPECT_EQ(folder.read("tst/model/newindex"),
            "0\n3 7\ngo up\n0.849462 -0.0645161\n1\n5\nwalk\n-0.4 0.285714\n"
            "2\n11\ngo\n0.8125 -0.125\n");
  EXPECT_EQ(log.lines("LibVelmora.Query"), Lines{"4 LibVelmora.Query tfidf: 3 does not exist"});

  // A second compilation appends, numbers from 0 again, and keeps the rows of ids that are gone;
  // 5 is now the lowest of its row and has no words to write.
  Rules more = {{3, {"stop"}}, {12, {"walk"}}};
  EXPECT_THROW(engine.xLoadDialogVectors(more), std::out_of_range);
  EXPECT_EQ(engine.fRuleWords, more);
  EXPECT_EQ(engine.fRuleVectors.size(), 5U);
  EXPECT_EQ(engine.fRuleRows, (std::map<int, int>{{3, 0}, {5, 1}, {7, 0}, {11, 2}, {12, 1}}));
}

TEST_F(Engine, RanksActiveRulesByCosine) {
  engine.xLoadDialogVectors(rules);
  engine.xActiveAllRules();
  Ids unknown = {20};
  engine.xUpdateActiveRules(unknown);
  // Ids without a row are scored as row 0, and have it from then on.
  Matches matches = match("Go! go lamp");
  ASSERT_EQ(matches.size(), 3U);
  EXPECT_NEAR(matches[1].first, 0.997049, 1e-6);
  EXPECT_NEAR(matches[2].first, -0.892653, 1e-6);
  EXPECT_EQ(matches[1].second, (std::vector<int>{3, 7, 9, 20}));
  EXPECT_EQ(matches[2].second, std::vector<int>{5});
  EXPECT_EQ(engine.fRuleRows.count(20), 1U);
  EXPECT_EQ(match("lamp"), (Matches{{0.0, {3, 5, 7, 9, 11, 20}}}));

  Ids off = {3, 7, 9, 20, 99};
  engine.xUpdateDeactiveRules(off);
  EXPECT_EQ(engine.getActive_rules(), (Ids{5, 11}));
  Ids on = {5};
  engine.xUpdateActiveRules(on);  // adds, narrows nothing
  EXPECT_EQ(engine.xMatchInput("go", matches), 1);
  EXPECT_EQ(matches.size(), 5U);  // appended
}

TEST_F(Engine, GrowsAListThatIsAppendedToInFewSteps) {
  engine.xLoadDialogVectors(rules);
  engine.xActiveAllRules();
  Matches matches;
  std::set<std::size_t> capacities;
  for (int match = 0; match != 1000; ++match) {
    engine.xMatchInput("go", matches);
    capacities.insert(matches.capacity());
  }
  EXPECT_LT(capacities.size(), 20U);
}

TEST_F(Engine, RefusesWhatItCannotMatch) {
  engine.xActiveAllRules();
  EXPECT_EQ(engine.getActive_rules(), Ids());  // nothing compiled yet
  engine.xLoadDialogVectors(rules);
  engine.xActiveAllRules();
  const auto expect_refusal = [&](const std::string& sizes) {
    log.records.clear();
    Matches matches = {{0.5, {1}}};
    EXPECT_EQ(engine.xMatchInput("go", matches), -1);
    EXPECT_EQ(matches, (Matches{{0.5, {1}}}));
    EXPECT_EQ(log.lines(), Lines{"2 LibVelmora.Command xMatchInput: fVocab.size() " + sizes});
  };
  engine.fActive_rules.clear();
  expect_refusal("4fModel.dim 2fActive_rules.size() 0");
  engine.xActiveAllRules();
  engine.fVocab.clear();
  expect_refusal("0fModel.dim 2fActive_rules.size() 5");
}

TEST_F(Engine, MeasuresWordLists) {
  EXPECT_NEAR(engine.xSimpleDist({"go", "lamp"}, {"go"}), 1.0, 1e-12);
  // The repeat doubles a weight.
  EXPECT_NEAR(engine.xSimpleDist({"go", "go", "stop"}, {"stop"}), 0.0554701, 1e-6);
  EXPECT_EQ(engine.xSimpleDist({"Go", "go "}, {"go"}), 0.0);  // taken as they come
}

TEST_F(Engine, TellsSpecificities) {
  using Specific = std::map<double, std::string>;
  EXPECT_EQ(engine.xSpecificities("go up"), (Specific{{1.0, "go up"}}));  // no stemmer yet
  engine.xLoadDialogVectors(rules);
  engine.fIdf[1] = 2.0;
  EXPECT_EQ(engine.xSpecificities("stop go walk up"), (Specific{{0.5, "up"}, {2.0, "go"}}));
  EXPECT_EQ(engine.xSpecificities("Walk!"), (Specific{{1.0, "Walk!"}}));
}

TEST_F(Engine, PrintsWordDistancesByWordId) {
  // Filled by position (a, b, c), printed by id (1, 2, 3): a and b are alike, yet the line "b"
  // below "a" holds the cosine of b and c. Word id 3 has no row and no position.
  engine.fVocab = {{"a", 1}, {"b", 2}, {"c", 3}};
  engine.fModel.word_factors = Eigen::MatrixXd::Identity(2, 4);
  engine.fModel.word_factors.col(2) = engine.fModel.word_factors.col(1);
  testing::internal::CaptureStdout();
  EXPECT_EQ(engine.loadWordDists(), 1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "nb_queries 3\nfVocab.size() 3\n"
            "\na\n\n    a 1\n    b 0\n    c 0\n"
            "\nb\n\n    a 0\n    b 0\n    c 0\n"
            "\nc\n\n    a 0\n    b 0\n    c 0\n");
  EXPECT_NEAR(engine.fWordDists[0][1], 1.0, 1e-12);
  EXPECT_EQ(engine.fWordDists[3].size(), 3U);  // entered by the printing
}

}  // namespace
