// The public class as a host has it: the shared library and its headers alone.
#include <gtest/gtest.h>

#include <velmora/velmora.hpp>

#include "support/fixtures.hpp"

namespace {

using namespace test;

TEST(Velmora, ServesAHostFromStartToWarmStart) {
  const TemporaryFolder folder;
  const Rules rules = many_rules(folder);
  LogCapture log;
  VX::Dialog::Velmora matcher;
  std::string base = folder.path(), language = kLanguage, ignored = "as it was";
  Matches matches, others, again;
  EXPECT_EQ(matcher.getAvailableLanguages(), (Lines{"frf", "enu", "jpj"}));
  matcher.activeAllRules(ignored);
  EXPECT_EQ(matcher.matchInput("go", matches, ignored), -1);
  EXPECT_EQ(log.lines(), Lines{"2 LibVelmora.Command xMatchInput: fVocab.size() 0fModel.dim 0"
                               "fActive_rules.size() 0"});
  EXPECT_EQ(log.records[0].file, "");
  EXPECT_EQ(log.records[0].line, 0);
  EXPECT_FALSE(matcher.loadSemanticModels(ignored));

  ASSERT_TRUE(matcher.setModel(base, language));
  EXPECT_TRUE(matcher.loadSemanticModels(ignored));
  EXPECT_TRUE(matcher.loadDialogVectors(ignored, rules));
  EXPECT_EQ(matcher.matchInput("go", matches, ignored), -1);  // none is active
  matcher.activeAllRules(ignored);
  EXPECT_EQ(matcher.matchInput("go stop", matches, ignored), 1);
  ASSERT_EQ(matches.size(), 21U);
  EXPECT_EQ(matches[0].second, std::vector<int>{2});
  matcher.updateDeactiveRules({2}, ignored);
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
  EXPECT_EQ(testing::internal::GetCapturedStdout().rfind("nb_queries 5\nfVocab.size() 5\n\ngo", 0),
            0U);

  VX::Dialog::Velmora warm;
  ASSERT_TRUE(warm.setModel(base, language));
  EXPECT_FALSE(warm.loadDialogVectorsFromFile("none", rules, "newindex", true));
  EXPECT_TRUE(warm.loadDialogVectorsFromFile("newindex", rules, "none", true));
  EXPECT_EQ(folder.read("tst/model/index"), folder.read("tst/model/newindex"));
  warm.activeAllRules(ignored);
  EXPECT_EQ(warm.matchInput("go stop", again, ignored), 1);
  EXPECT_EQ(again[0].second, matches[0].second);
  EXPECT_EQ(ignored, "as it was");
}

}  // namespace
