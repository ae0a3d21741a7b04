// `velmora match --published`: what a host of the published classes gets, and snapshots that can be
// relied on.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../kept-snapshot.hpp"
#include "kit/program-run.hpp"

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kMatch = "match --published --model enu/model ";

class Published : public ::testing::Test {
 protected:
  Published() {
    place.write("rules.tsv",
                "20\tPlay music!\n3\tSwitch on the light.\n20\tand songs\n7\tUnknown.\n");
    place.write("apps.tsv", "player\tMusic\nlantern\tLight\n");
  }

  ProgramResult run(const std::string& arguments, const std::string& input) const {
    return place.run(VELMORA_PROGRAM, kMatch + arguments, input);
  }

  /// What a start with the snapshot "mine" says.
  std::string start() const {
    const ProgramResult result = run("--rules rules.tsv --snapshot mine", "song\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("1.000  ████████████████████  20  Play music!"));
    return result.err;
  }

  Workplace place;
};

TEST_F(Published, BestRuleFirstAndEqualScoresById) {
  const ProgramResult result = run("--rules rules.tsv", "songs\nlamp, song\nxyzzy\n");
  EXPECT_EQ(result.out,
            "songs\n"
            " 1.000  ████████████████████  20  Play music!\n"
            " 0.000                        3   Switch on the light.\n\n"
            "lamp, song\n"
            " 0.707  ██████████████▏       3   Switch on the light.\n"
            " 0.707  ██████████████▏       20  Play music!\n\n"
            "xyzzy\n  nothing matches\n  unknown: xyzzi\n\n");
  EXPECT_THAT(result.err, HasSubstr("warning: rule 7 has no word that the model knows"));
  EXPECT_FALSE(std::filesystem::exists(place.path("enu/model/newindex")));
}

TEST_F(Published, ApplicationsThatReachTheThreshold) {
  EXPECT_EQ(run("--apps apps.tsv --threshold 0.9", "song\nlamp song\n").out,
            "song\n 1.000  ████████████████████  player  Music\n\n"
            "lamp song\n  nothing matches\n\n");
}

TEST_F(Published, KeepsASnapshotUpToDate) {
  const std::string snapshot = "enu/model/mine";
  EXPECT_THAT(start(), HasSubstr("no snapshot yet, compiled: 2 rules in "));
  const std::string whole = place.read(snapshot);
  EXPECT_THAT(start(), HasSubstr("warm start from enu/model/mine: 2 rules in "));

  // A rule that is new is compiled at the start.
  place.write("rules.tsv", "20\tPlay music!\n30\tA light and a song.\n");
  EXPECT_THAT(start(), HasSubstr("warm start"));
  EXPECT_THAT(place.read(snapshot), HasSubstr("light song"));

  // One that was cut short would give scores of 1 for what is unrelated.
  place.write(snapshot, whole.substr(0, whole.size() - 3));
  EXPECT_THAT(start(), HasSubstr("snapshot damaged, compiled anew"));

  // Vectors of an older model would give wrong scores.
  std::filesystem::last_write_time(
      place.path("enu/model/model"),
      std::filesystem::last_write_time(place.path(snapshot)) + std::chrono::seconds(1));
  EXPECT_THAT(start(), HasSubstr("older than the model"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(place.path("enu/model")), {}), 5);
}

struct SnapshotCase {
  const char* what;
  const char* text;
  std::size_t rule_count;
  bool whole;
};

const SnapshotCase kSnapshots[] = {
    {"two rows, three rules", "0\n7 12\nlamp\n0.5 1\n1\n9\nsong\n1e-05 2\n", 3, true},
    {"any number of rules", "0\n7 12\nlamp\n0.5 1\n", 0, true},
    {"a rule is missing", "0\n7 12\nlamp\n0.5 1\n", 3, false},
    {"nothing was written", "", 0, false},
    {"cut within the last value", "0\n7\nlamp\n0.5 1.2", 0, false},
    {"cut after a line", "0\n7\nlamp\n", 0, false},
    {"a vector without its last value", "0\n7\nlamp\n0.5 1\n1\n9\nsong\n1e-05\n", 0, false},
    {"a row without rules", "0\n\nlamp\n0.5 1\n", 0, false},
};

TEST(Snapshot, IsWholeWhenNothingCutItShort) {
  const test::TemporaryFolder folder;
  for (const SnapshotCase& c : kSnapshots) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(is_whole_snapshot(folder.write("snapshot", c.text), c.rule_count), c.whole);
  }
}

// A limit on the size of files stands for a full disk.
TEST_F(Published, NeverKeepsHalfASnapshot) {
  start();
  const std::string before = place.read("enu/model/mine");
  std::string rules;
  for (int id = 100; id != 200; ++id) {
    rules += std::to_string(id) + (id % 2 == 0 ? "\tlamp\n" : "\tlight song\n");
  }
  place.write("rules.tsv", "20\tPlay music!\n" + rules);
  const ProgramResult full =
      place.run("/bin/bash",
                "-c \"(ulimit -f 0; trap '' XFSZ; " VELMORA_PROGRAM " " + std::string(kMatch) +
                    "--rules rules.tsv --snapshot mine </dev/null 2>&1 >/dev/null) | cat >&2\"",
                "");
  EXPECT_THAT(full.err, HasSubstr("snapshot not saved"));
  EXPECT_THAT(full.err, Not(HasSubstr("snapshot saved")));
  EXPECT_EQ(place.read("enu/model/mine"), before);
}

}  // namespace
