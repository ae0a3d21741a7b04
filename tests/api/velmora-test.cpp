// The public class as a host has it: the shared library and its headers alone.
#include <gtest/gtest.h>

#include <velmora/velmora.hpp>

#include "kit/fixtures.hpp"

namespace {

using namespace test;

TEST(Velmora, ServesAHostFromStartToWarmStart) {
  const TemporaryFolder folder;
  const Rules rules = many_rules(folder);
  LogCapture log;
  VX::Dialog::Velmora matcher;
  std::string base = folder.path(), language = kLanguage, ignored = "as it was";
  Matches matches, others;
  EXPECT_EQ(matcher.getAvailableLanguages(), (Lines{"frf", "enu", "jpj"}));
  matcher.activeAllRules(ignored);
  EXPECT_EQ(matcher.matchInput("go", matches, ignored), -1);
  EXPECT_EQ(log.records.at(0).file, "");
  EXPECT_EQ(log.records.at(0).line, 0);
  EXPECT_FALSE(matcher.loadSemanticModels(ignored));

  ASSERT_TRUE(matcher.setModel(base, language));
  EXPECT_TRUE(matcher.loadDialogVectors(ignored, rules));
  matcher.activeAllRules(ignored);
  EXPECT_EQ(matcher.matchInput("go stop", matches, ignored), 1);
  ASSERT_EQ(matches.size(), 21U);
  matcher.updateDeactiveRules({2, 30}, ignored);
  matcher.updateActiveRules({30}, ignored);
  EXPECT_EQ(matcher.matchInput("go stop", others, ignored), 1);
  EXPECT_EQ(others[0], matches[1]);  // without rule 2

  EXPECT_NEAR(matcher.simpleDist({"go"}, {"go"}, ignored), 1.0, 1e-12);
  log.records.clear();
  EXPECT_TRUE(matcher.getSpecificities("go lamp", ignored).empty());
  EXPECT_EQ(log.lines(),
            Lines{"4 LibVelmora.Command xSpecificities: Specificities, word not found: lamp"});
  testing::internal::CaptureStdout();
  EXPECT_EQ(matcher.loadWordDistIndex(ignored), 1);
  EXPECT_NE(testing::internal::GetCapturedStdout(), "");
  EXPECT_TRUE(matcher.loadDialogVectorsFromFile("newindex", rules, "none", true));
  EXPECT_EQ(folder.read("tst/model/index"), folder.read("tst/model/newindex"));
  EXPECT_EQ(ignored, "as it was");
}

}  // namespace
