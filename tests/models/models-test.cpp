// The ready-made matchers over topics and applications.
#include <cmath>
#include <filesystem>

#include <gtest/gtest.h>

#include <velmora/app-model.hpp>
#include <velmora/topic-model.hpp>

#include "kit/fixtures.hpp"
#include "models/app-model-private.hpp"

namespace {

using namespace VX::Dialog;
using namespace test;
using Applications = std::map<std::string, std::vector<std::string>>;
using Named = std::vector<std::pair<double, std::vector<std::string>>>;

class Models : public testing::Test {
 protected:
  Models() {
    use_installed_data(folder);
    std::filesystem::current_path(folder.path());
  }
  ~Models() override { std::filesystem::current_path("/"); }

  TemporaryFolder folder;
  LogCapture log;
  std::string ignored;
};

TEST_F(Models, TopicsTakeTheWorkingFolderThenTheInstalledData) {
  const auto topics = many_rules(folder, kInstalledRoot);
  Matches matches;
  EXPECT_EQ(TopicModel(kLanguage, topics).matchInput("go", matches, ignored), 1);
  EXPECT_EQ(matches.size(), 11U);
  EXPECT_EQ(matches[0].second, std::vector<int>{0});
  log.records.clear();
  write_model(folder, "topicmodel.txt/tst");
  const TopicModel own(kLanguage, topics);
  EXPECT_EQ(log.lines("LibVelmora.Command"), Lines());
  EXPECT_EQ(log.lines("LibVelmora.Model").size(), 2U);  // loaded twice
  EXPECT_EQ(TopicModel("nowhere", topics).matchInput("go", matches, ignored), -1);
  EXPECT_EQ(matches.size(), 11U);
}

TEST_F(Models, ApplicationsAreNumberedByNameAndCutByThreshold) {
  write_model(folder);
  AppModel model;
  Applications applications = {{"b", {"stop"}}, {"a", {"go"}}, {"c", {"stop"}}};
  ASSERT_TRUE(model.setModel(folder.path(), kLanguage, applications));
  Named all;
  EXPECT_EQ(model.matchInput("go", all, -1), 1);
  ASSERT_EQ(all.size(), 2U);
  EXPECT_EQ(all[0].second, (std::vector<std::string>{"a"}));
  EXPECT_EQ(all[1].second, (std::vector<std::string>{"b", "c"}));
  EXPECT_NEAR(all[1].first, -0.273475, 1e-6);

  const auto count = [&](const char* sentence, double threshold) {
    Named matches;
    EXPECT_EQ(model.matchInput(sentence, matches, threshold), 1);
    return matches.size();
  };
  EXPECT_EQ(count("go", all[0].first), 1U);
  EXPECT_EQ(count("go", std::nextafter(all[0].first, 2.0)), 0U);
  EXPECT_EQ(count("go", NAN), 0U);
  EXPECT_EQ(count("lamp", 0.0), 1U);  // nothing known scores 0
  // A failed setModel enters its names all the same; the engine stays as it was, and ready.
  Applications others = {{"z", {"up"}}};
  EXPECT_FALSE(model.setModel(folder.path(), "nowhere", others));
  EXPECT_TRUE(model.isReady());
  EXPECT_EQ(model.matchInput("go", all, 0.5), 1);
  ASSERT_EQ(all.size(), 3U);  // appended
  EXPECT_EQ(all[2].second, (std::vector<std::string>{"z"}));
}

TEST_F(Models, ApplicationsReportTheirStates) {
  AppModel model;
  Applications none, one = {{"a", {"go"}}};
  Named matches;
  EXPECT_FALSE(model.isReady());
  EXPECT_EQ(model.matchInput("go", matches, 0), -1);
  EXPECT_EQ(log.lines(),
            Lines{"3 Dialog.AppModel.personnalData matchInput: no application indexed"});
  write_model(folder);
  EXPECT_TRUE(model.setModel(folder.path(), kLanguage, none));
  EXPECT_TRUE(model.isReady());
  EXPECT_EQ(model.matchInput("go", matches, 0), -1);

  EXPECT_EQ(AppModelPrivate().fMaxResults, 20);
  EXPECT_EQ(AppModelPrivate(kLanguage).fMaxResults, 10);
  // A place without the scalar file is found, and the second load fails.
  AppModel failed;
  std::filesystem::remove(folder.path("tst/model/model"));
  EXPECT_FALSE(failed.setModel(folder.path(), kLanguage, one));
  EXPECT_FALSE(failed.isReady());
  log.records.clear();
  EXPECT_EQ(failed.matchInput("go", matches, 0), 1);
  EXPECT_EQ(log.lines(), Lines{"2 LibAppModel.Command xMatchInput: fVocab.size() 4fModel.dim 0"});
  EXPECT_TRUE(matches.empty());
}

}  // namespace
