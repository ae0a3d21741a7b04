// Both loads of the warm start, through both engines: tables, files, log lines and dumps.
#include <filesystem>

#include <gtest/gtest.h>

#include <velmora/debug.hpp>

#include "engine/velmora-private.hpp"
#include "kit/fixtures.hpp"
#include "models/app-model-private.hpp"

namespace {

using namespace VX::Dialog;
using namespace test;
using Rows = std::map<int, int>;

template <typename Engine>
class WarmStart : public testing::Test {
 protected:
  static constexpr bool kIsApp = std::is_same_v<Engine, AppModelPrivate>;

  WarmStart() {
    give_model(engine_, folder);
    folder.write("tst/model/snap", kSnapshot);
    log.records.clear();
  }
  bool load(const std::string& name, const Rules& given, bool merge) {
    log.records.clear();
    return engine_.xLoadDialogVectorsFromFile(name, given, merge);
  }
  // The lines of the engine's own category, which must all be at level info.
  Lines logged() const {
    Lines lines;
    for (const zu::log::Record& record : log.records) {
      if (record.category == (kIsApp ? "LibAppModel.Command" : "LibVelmora.Command")) {
        EXPECT_EQ(record.level, zu::log::Level::info);
        lines.push_back(record.function + ":" + record.text);
      }
    }
    return lines;
  }
  std::string dump(bool merge) {
    testing::internal::CaptureStdout();
    load("snap", rules_, merge);
    return testing::internal::GetCapturedStdout();
  }

  // Ids and order of stems play no part in finding a record; nothing refers to the second one.
  static constexpr const char* kSnapshot = "0\n40\nstop go\n7 8\n1\n41\ngo\n5 5\n";
  Rules rules_ = {{1, {"go stop"}}, {2, {"up"}}, {3, {"stop", "go!"}},
                  {4, {"walk"}},    {5, {"up"}}, {6, {"lamp"}}};
  TemporaryFolder folder;
  LogCapture log;
  Engine engine_;
};

using Engines = testing::Types<VelmoraPrivate, AppModelPrivate>;
TYPED_TEST_SUITE(WarmStart, Engines);

TYPED_TEST(WarmStart, MergesStoredAndNewVectors) {
  auto& engine = this->engine_;
  engine.fRuleRows = {{1, 5}, {6, 0}};  // an entry of another id stays
  ASSERT_TRUE(this->load("snap", this->rules_, true));
  EXPECT_EQ(engine.fRuleRows, (Rows{{1, 0}, {2, 1}, {3, 0}, {4, 2}, {5, 1}, {6, 0}}));
  EXPECT_EQ(
      engine.fRuleWords,
      (Rules{{1, {"go", "stop"}}, {2, {"up"}}, {3, {"go", "stop"}}, {4, {"walk"}}, {5, {"up"}}}));
  EXPECT_EQ(engine.fRuleFreqs,
            (std::map<std::string, int>{{"go", 2}, {"stop", 2}, {"up", 2}, {"walk", 1}}));
  EXPECT_EQ(this->folder.read("tst/model/index"),
            "0\n1 3 6\ngo stop\n7 8\n1\n2 5\nup\n0.144737 0.184211\n2\n4\nwalk\n-0.4 0.285714\n");
  EXPECT_EQ(
      this->logged(),
      (Lines{"xLoadDialogVectorsFromFile: loading index: " + this->folder.path("tst/model/snap"),
             "load_snapshot_ls2:Total new rules IDs: 5", "load_snapshot_ls2:known rules: 1",
             "load_snapshot_ls2:unique unknown rules: 2", "load_snapshot_ls2:rules to compile: 2",
             "load_snapshot_ls2:Calculated vectors", "load_snapshot_ls2:Updated index",
             "xLoadDialogVectorsFromFile: saving index ",
             "xLoadDialogVectorsFromFile: saved index "}));
  // Only new stem sets are weighted, and the words without idf among them logged.
  EXPECT_EQ(this->log.lines("LibVelmora.Query"),
            Lines{"4 LibVelmora.Query tfidf: 3 does not exist"});
}

TYPED_TEST(WarmStart, LoadsTheFirstRulesOfKnownSetsAlone) {
  auto& engine = this->engine_;
  const Rules more = {{1, {"go stop"}}, {2, {"up"}}, {3, {"go stop"}}, {4, {"walk"}}, {9, {"go"}}};
  engine.fIdf.erase(0);
  ASSERT_TRUE(this->load("snap", more, false));
  // No inference, yet words without idf are logged as if there were one.
  EXPECT_EQ(this->log.lines("LibVelmora.Query"),
            Lines(2, "4 LibVelmora.Query tfidf: 0 does not exist"));
  EXPECT_EQ(engine.fRuleRows, (Rows{{1, 0}, {9, 1}}));
  EXPECT_EQ(engine.fRuleWords, (Rules{{1, {"go", "stop"}}, {9, {"go"}}}));
  EXPECT_EQ(engine.fRuleVectors, (Vectors{{7, 8}, {5, 5}}));
  EXPECT_EQ(engine.fRuleFreqs.at("walk"), 1);  // counted, though ignored
  EXPECT_FALSE(std::filesystem::exists(this->folder.path("tst/model/index")));
  EXPECT_EQ(
      this->logged(),
      (Lines{"xLoadDialogVectorsFromFile: loading index: " + this->folder.path("tst/model/snap"),
             "load_snapshot_index:Total new rules IDs: 5", "load_snapshot_index:known rules: 2",
             "load_snapshot_index:unique unknown rules: 2", "load_snapshot_index:ignored rule: 2",
             "load_snapshot_index:Updated index"}));
  // The given rules stay, and those of a merge are emptied.
  Rules given = more;
  Vectors vectors;
  EXPECT_TRUE(engine.load_snapshot_index("none", vectors, given, engine.fStemmer.get()));
  EXPECT_EQ(given, more);
  EXPECT_TRUE(engine.load_snapshot_ls2("none", vectors, given, engine.fStemmer.get()));
  EXPECT_EQ(given, Rules());
  EXPECT_EQ(vectors.size(), 4U);
  EXPECT_EQ(engine.fRuleVectors.size(), 2U);
}

TYPED_TEST(WarmStart, DumpsWhenItsOwnFlagIsSet) {
  bool& own = this->kIsApp ? DEBUGAPP : DEBUG;
  bool& other = this->kIsApp ? DEBUG : DEBUGAPP;
  other = true;
  EXPECT_EQ(this->dump(true), "");
  EXPECT_EQ(this->dump(false), "");
  other = false;
  own = true;
  EXPECT_EQ(this->dump(false), "words2ls  2\nmerged_ls  1\n");
  EXPECT_EQ(this->dump(true),
            "go\n5 5\n\ngo stop\n7 8\n\n2\nup\n0.144737 0.184211\n\n4\nwalk\n-0.4 0.285714\n\n"
            "new_Sentences_ls  2\nwords2ls  2\nmerged_ls  3\n");
  own = false;
}

TYPED_TEST(WarmStart, FailsToSaveAtAStaleId) {
  ASSERT_TRUE(this->load("snap", this->rules_, true));
  try {
    this->load("index", {{3, {"go stop"}}}, true);
    FAIL() << "rule 1 is the lowest of row 0 and is gone";
  } catch (const std::out_of_range& e) {
    EXPECT_STREQ(e.what(), "map::at:  key not found");
  }
  EXPECT_EQ(this->logged().back(), "xLoadDialogVectorsFromFile: saving index ");
  EXPECT_EQ(this->folder.read("tst/model/index"), "0\n1 3\n");
  EXPECT_EQ(this->engine_.fRuleVectors, (Vectors{{7, 8}}));
}

TYPED_TEST(WarmStart, TakesWhatTheFileSystemHas) {
  auto& engine = this->engine_;
  engine.fRuleVectors = {{1, 1}};
  for (const char* missing : {"none", "snap/", "/snap/none"}) {
    EXPECT_FALSE(this->load(missing, this->rules_, true)) << missing;
  }
  EXPECT_TRUE(engine.fStemmer);
  EXPECT_EQ(this->log.lines(), Lines());
  EXPECT_EQ(engine.fRuleVectors, (Vectors{{1, 1}}));
  // A folder is an empty snapshot: nothing is known to one load, and all is compiled by the other.
  EXPECT_TRUE(this->load("", this->rules_, false));
  EXPECT_EQ(engine.fRuleVectors, Vectors());
  EXPECT_EQ(engine.fRuleWords, Rules());
  EXPECT_TRUE(this->load("", this->rules_, true));
  EXPECT_EQ(engine.fRuleVectors.size(), 3U);
}

}  // namespace
