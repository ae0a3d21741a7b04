// What a user of velmora sees: runs of its commands with their input, output and errors.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "../id-list.hpp"
#include "../terminal.hpp"
#include "kit/program-run.hpp"

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// A model of four words: lamp and light have one direction, music and song the other.
constexpr const char* kModel = " --model enu/model --rules rules.tsv ";

class Commands : public ::testing::Test {
 protected:
  Commands() {
    place.write("rules.tsv",
                "\xEF\xBB\xBF# lights\n\n20\tPlay music!\r\n3\tSwitch on the light.\n"
                "20\tand songs\n7\tFrobnicate.\n");
    place.write("expect.tsv", "20\tsong\n3\tsongs, frobnicated\n-\tlamp\n");
  }

  ProgramResult run(const std::string& arguments, const std::string& input = "") const {
    return place.run(VELMORA_PROGRAM, arguments, input);
  }

  Workplace place;
};

TEST_F(Commands, MatchRanksRules) {
  const ProgramResult result = run(std::string("match --top 2") + kModel, "songs\n\n lamp, xyzzy");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("songs\n"));
  EXPECT_THAT(result.out, HasSubstr("  20  and songs\n"));
  EXPECT_THAT(result.out, HasSubstr("  3   Switch on the light.\n"));
  EXPECT_THAT(result.out, HasSubstr("  unknown: xyzzi\n"));
  EXPECT_THAT(run(std::string("match --threshold 0.99") + kModel, "lamp song").out,
              HasSubstr("  nothing matches\n"));
}

TEST_F(Commands, MatchPrintsJson) {
  const ProgramResult result =
      run(std::string("match --json --active 3-19") + kModel, "a \"song\" \n");
  const nlohmann::json answer = nlohmann::json::parse(result.out, nullptr, false);
  EXPECT_EQ(answer["sentence"], "a \"song\" ");
  ASSERT_EQ(answer["matches"].size(), 2u);
  EXPECT_TRUE(answer["matches"][0]["score"].is_number());
  EXPECT_TRUE(answer["unknown"].is_array());
}

TEST_F(Commands, ExplainAddsUpToTheScore) {
  const ProgramResult explained = run(std::string("explain 20 songs --top 2") + kModel);
  EXPECT_THAT(explained.out,
              AllOf(HasSubstr("rule 20: and songs\n"), HasSubstr("  song              song\n"),
                    HasSubstr(" weaker pairs)\n")));
  const nlohmann::json answer = nlohmann::json::parse(
      run(std::string("match --json") + kModel, "songs\n").out, nullptr, false);
  char total[32];
  std::snprintf(total, sizeof total, "\n%9.3f", answer["matches"][0]["score"].get<double>());
  EXPECT_THAT(explained.out, HasSubstr(total));
}

TEST_F(Commands, LintNamesTheLine) {
  const ProgramResult result = run(std::string("lint") + kModel);
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("rules.tsv:6: warning: "));
  EXPECT_THAT(result.out, HasSubstr(", 3 rules\n"));
  EXPECT_EQ(run(std::string("lint --strict") + kModel).status, 1);
}

TEST_F(Commands, TestNamesTheLineAndKeepsTheBar) {
  const std::string test = std::string("test --expect expect.tsv") + kModel;
  const ProgramResult result = run(test);
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.out, HasSubstr("expect.tsv:2: wanted 3 (rank "));
  EXPECT_THAT(result.out, HasSubstr("\n1 for no rule: area under the ROC curve "));
  EXPECT_THAT(result.out, HasSubstr(": songs, frobnicated\n"));
  EXPECT_THAT(result.out, HasSubstr("1 of 2 right (50.0 %)"));
  EXPECT_EQ(run("test --at-least 50 --expect expect.tsv" + std::string(kModel)).status, 0);
  const nlohmann::json report = nlohmann::json::parse(run(test + " --json").out, nullptr, false);
  EXPECT_EQ(report["first"], 0.5);
  EXPECT_EQ(report["outside"], 1);
  EXPECT_EQ(report["failures"][0]["line"], 2);
}

struct ComplaintCase {
  const char* what;
  const char* arguments;
  int status;
  const char* err;
};

const ComplaintCase kComplaints[] = {
    // Options.
    {"mistyped option", "match --model enu/model --rulse rules.tsv", 2,
     "velmora match: error: unknown option '--rulse'; did you mean '--rules'?"},
    {"mistyped command", "macth --rules rules.tsv", 2,
     "unknown command 'macth'; did you mean 'match'?"},
    {"no command", "", 2, "velmora: error: a command is required"},
    {"no rules", "match --model enu/model", 2, "--rules is required"},
    {"nothing to show", "match --model enu/model --rules rules.tsv --top 0", 2,
     "--top: '0' is not a number from 1 on"},
    {"id list", "match --model enu/model --rules rules.tsv --active 3,x", 2,
     "'x' is neither a rule id nor a range"},
    {"id without a rule", "match --model enu/model --rules rules.tsv --active 4-6", 2,
     "there is no rule 4-6"},
    {"snapshot elsewhere", "match --published --model enu/model --rules rules.tsv --snapshot ../x",
     2, "'../x' is not a plain file name"},
    {"bar above all", "test --model enu/model --rules rules.tsv --expect expect.tsv --at-least 101",
     2, "--at-least: '101' is not a number from 0 to 100"},
    {"explained rule", "explain --model enu/model --rules rules.tsv 4 song", 1, "4"},
    // Models.
    {"model that is not there", "match --model none --rules rules.tsv", 1, "none"},
    {"cut model", "match --model cut --rules rules.tsv", 1, "cut/model.conf:"},
    {"language", "match --language xx --model enu/model --rules rules.tsv", 1, "xx"},
    // Rules: every bad line.
    {"no tab", "lint --model enu/model --rules bad.tsv", 1, "bad.tsv:2: error: "},
    {"id too large", "lint --model enu/model --rules bad.tsv", 1, "bad.tsv:3: error: "},
    {"empty sentence", "lint --model enu/model --rules bad.tsv", 1, "bad.tsv:4: error: "},
    {"Latin-1", "lint --model enu/model --rules bad.tsv", 1, "bad.tsv:5: error: "},
    {"folder", "lint --model enu/model --rules enu", 1, "velmora: error: enu: "},
    {"missing file", "lint --model enu/model --rules none.tsv", 1, "velmora: error: none.tsv: "},
    {"empty file", "lint --model enu/model --rules empty.tsv", 1, "velmora: error: empty.tsv: "},
    // Expectations.
    {"neither id nor -", "test --model enu/model --rules rules.tsv --expect bad-expect.tsv", 1,
     "bad-expect.tsv:1: error: "},
    {"rule that is not there", "test --model enu/model --rules rules.tsv --expect stale.tsv", 1,
     "stale.tsv:2: error: there is no rule 8 in rules.tsv"},
};

TEST_F(Commands, SayWhatIsWrong) {
  place.write("bad.tsv", "1\tlamp\nlight\n2147483648\tlamp\n2\t \n3\tcaf\xE9\n");
  place.write("empty.tsv", "# nothing\n");
  place.write("bad-expect.tsv", "none\tlamp\n");
  place.write("stale.tsv", "20\tsong\n8\tlamp\n");
  for (const char* file : {"dictionary", "idf", "model"}) {
    place.write(std::string("cut/") + file, place.read(std::string("enu/model/") + file));
  }
  place.write("cut/model.conf", "4 2\n1 0\n1 0\n");
  for (const ComplaintCase& c : kComplaints) {
    SCOPED_TRACE(c.what);
    const ProgramResult result = run(c.arguments);
    EXPECT_EQ(result.status, c.status);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err, HasSubstr(c.err));
  }
}

TEST_F(Commands, RefuseSentencesThatAreNotText) {
  const ProgramResult result = run(std::string("match") + kModel, "song\ncaf\xE9\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("standard input:2: error: "));
}

TEST_F(Commands, FailWhenNobodyGetsTheOutput) {
  const std::string match = std::string("match") + kModel;
  for (const char* lost : {" >/dev/full #", " >&- #", " | false #"}) {
    SCOPED_TRACE(lost);
    const ProgramResult result = place.run(
        "/bin/bash",
        "-c 'set -o pipefail; sleep 0.2; echo song | " VELMORA_PROGRAM " " + match + lost + "'",
        "");
    EXPECT_EQ(result.status, 1);
  }
}

TEST(IdList, PicksTheRulesThatThereAre) {
  const std::set<int> rules = {-4, 3, 5, 8, 100};
  EXPECT_EQ(pick_ids("5", rules), (std::set<int>{5}));
  EXPECT_EQ(pick_ids("4-99,3", rules), (std::set<int>{3, 5, 8}));
  EXPECT_EQ(pick_ids("all", rules), rules);
  for (const char* wrong : {"", "x", "5-", "8-5", "5,,8", "9", "5 8"}) {
    EXPECT_ANY_THROW(pick_ids(wrong, rules)) << wrong;
  }
}

TEST(Terminal, PadsByWhatAReaderSees) {
  use_utf8_locale();
  EXPECT_EQ(padded("caf\xC3\xA9", 6), "caf\xC3\xA9  ");
  EXPECT_EQ(padded("\xE5\x85\x89", 3), "\xE5\x85\x89 ");  // one character, two columns
  EXPECT_EQ(padded("long", 2), "long");
}

// script(1) gives the program a terminal.
TEST_F(Commands, TalkToATerminal) {
  const std::string session =
      "-qec \"LC_ALL=C " VELMORA_PROGRAM " match" + std::string(kModel) + "\" /dev/null";
  const std::string screen = place
                                 .run("/usr/bin/script", session,
                                      "song\n:why\n:why 3\n:top 1\n:active "
                                      "3\nsong\n:reload\nhelp\n:frob\ncaf\xC3\xA9\nquit\n")
                                 .out;
  EXPECT_THAT(screen, HasSubstr("Type a sentence, or :help."));
  EXPECT_THAT(screen, HasSubstr("\033[1m20  and songs\033[0m"));
  EXPECT_THAT(screen, HasSubstr("rule 20: and songs"));
  EXPECT_THAT(screen, HasSubstr("rule 3: Switch on the light."));
  EXPECT_THAT(screen, HasSubstr("\033[1m3  Switch on the light.\033[0m"));
  EXPECT_THAT(screen, HasSubstr(":active IDS"));
  EXPECT_THAT(screen, HasSubstr("unknown command ':frob'"));
  EXPECT_THAT(screen, HasSubstr("unknown: caf\xC3\xA9"));
}

}  // namespace
