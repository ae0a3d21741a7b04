// The public class as a host has it: the shared library and its headers alone.
#include <gtest/gtest.h>

#include <velmora/velmora.hpp>

#include "support/fixtures.hpp"

namespace {

using namespace test;
using VX::Dialog::Velmora;

class Host : public testing::Test {
 protected:
  Host() : rules(many_rules(folder)), base(folder.path()) {}
  ~Host() override { EXPECT_EQ(ignored, "as it was"); }

  TemporaryFolder folder;
  LogCapture log;
  Velmora matcher;
  const Rules rules;
  std::string base, language = kLanguage, ignored = "as it was";
  Matches matches;
};

TEST_F(Host, HasAnEmptyMatcherFirst) {
  const Lines languages = {"frf", "enu", "jpj"};
  EXPECT_EQ(matcher.getAvailableLanguages(), languages);
  matcher.activeAllRules(ignored);
  EXPECT_EQ(matcher.matchInput("go", matches, ignored), -1);
  EXPECT_TRUE(matches.empty());
  EXPECT_EQ(log.lines(), Lines{"2 LibVelmora.Command xMatchInput: fVocab.size() 0fModel.dim 0"
                               "fActive_rules.size() 0"});
  zu::log::setLevel("LibVelmora.Command", zu::log::Level::fatal);
  EXPECT_EQ(matcher.matchInput("go", matches, ignored), -1);
  EXPECT_EQ(log.records.size(), 1U);
  EXPECT_EQ(log.records[0].file, "");
  EXPECT_EQ(log.records[0].line, 0);
  zu::log::setLevel("LibVelmora.Command", zu::log::Level::info);
  EXPECT_FALSE(matcher.loadSemanticModels(ignored));
  EXPECT_EQ(matcher.simpleDist({"go"}, {"go"}, ignored), 0.0);
}

TEST_F(Host, CompilesActivatesAndMatches) {
  ASSERT_TRUE(matcher.setModel(base, language));
  EXPECT_TRUE(matcher.loadSemanticModels(ignored));
  const Rules given = rules;
  EXPECT_TRUE(matcher.loadDialogVectors(ignored, rules));
  EXPECT_EQ(given, rules);
  EXPECT_EQ(matcher.matchInput("go", matches, ignored), -1);  // none is active
  matcher.activeAllRules(ignored);
  EXPECT_EQ(matcher.matchInput("go stop", matches, ignored), 1);
  ASSERT_EQ(matches.size(), 21U);
  EXPECT_EQ(matches[0].second, std::vector<int>{2});
  for (std::size_t i = 1; i != matches.size(); ++i) {
    EXPECT_LT(matches[i].first, matches[i - 1].first);
  }
  matcher.updateDeactiveRules({2}, ignored);
  Matches others;
  EXPECT_EQ(matcher.matchInput("go stop", others, ignored), 1);
  EXPECT_EQ(others[0], matches[1]);
  matcher.updateActiveRules({2}, ignored);
  EXPECT_EQ(matcher.matchInput("go stop", others, ignored), 1);
  EXPECT_EQ(others[21], matches[0]);

  EXPECT_NEAR(matcher.simpleDist({"go"}, {"go"}, ignored), 1.0, 1e-12);
  log.records.clear();
  EXPECT_TRUE(matcher.getSpecificities("go lamp", ignored).empty());
  EXPECT_EQ(log.lines(),
            Lines{"4 LibVelmora.Command xSpecificities: Specificities, word not found: lamp"});
  testing::internal::CaptureStdout();
  EXPECT_EQ(matcher.loadWordDistIndex(ignored), 1);
  EXPECT_EQ(testing::internal::GetCapturedStdout().find("nb_queries 5\nfVocab.size() 5\n\ngo\n"),
            0U);
}

TEST_F(Host, StartsWarmFromWhatItCompiled) {
  ASSERT_TRUE(matcher.setModel(base, language));
  matcher.loadDialogVectors(ignored, rules);
  matcher.activeAllRules(ignored);
  matcher.matchInput("walk up", matches, ignored);
  for (const bool merge : {false, true}) {
    Velmora warm;
    ASSERT_TRUE(warm.setModel(base, language));
    EXPECT_FALSE(warm.loadDialogVectorsFromFile("none", rules, "newindex", merge));
    ASSERT_TRUE(warm.loadDialogVectorsFromFile("newindex", rules, "none", merge));
    warm.activeAllRules(ignored);
    Matches again;
    EXPECT_EQ(warm.matchInput("walk up", again, ignored), 1);
    ASSERT_EQ(again.size(), matches.size());
    for (std::size_t i = 0; i != matches.size(); ++i) {
      EXPECT_EQ(again[i].second, matches[i].second);
      EXPECT_NEAR(again[i].first, matches[i].first, 1e-5);  // six digits are stored
    }
  }
  EXPECT_EQ(folder.read("tst/model/index"), folder.read("tst/model/newindex"));
}

}  // namespace
