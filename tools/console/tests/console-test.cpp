// What a user of velmora-console sees: runs of the program with its input, output and errors.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kit/program-run.hpp"

namespace {

using ::testing::HasSubstr;

constexpr const char* kRules = "--language enu --model . --rules rules.tsv ";

struct ConsoleCase {
  const char* what;
  std::string arguments;
  const char* input;
  int status;
  /// The whole of standard output, when the run succeeds; otherwise there is none.
  const char* out;
  /// Part of standard error.
  const char* err;
};

const ConsoleCase kCases[] = {
    {"best rule first, bars to scale, equal scores by id", kRules, "songs\n\n a lamp, a song", 0,
     "songs\n"
     " 1.000  ████████████████████  20  Play music!\n"
     " 0.000                        3   Switch on the light.\n\n"
     " a lamp, a song\n"
     " 0.707  ██████████████▏       3   Switch on the light.\n"
     " 0.707  ██████████████▏       20  Play music!\n\n",
     "rule 7 has no word that the model knows and is left out"},
    {"a sentence without a known word gets no scores", kRules, "xyzzy\n", 0,
     "xyzzy\n  no word of this is in the model's dictionary\n\n", ""},
    {"JSON", std::string(kRules) + "--json --active 20", "a \"song\" \xff\n", 0,
     "{\"sentence\":\"a \\\"song\\\" \xEF\xBF\xBD\",\"known\":true,\"matches\":[{\"score\":1.0,"
     "\"id\":\"20\",\"sentence\":\"Play music!\"}]}\n",
     ""},
    {"applications that reach the threshold",
     "--language enu --model . --apps apps.tsv --threshold 0.9", "song\nlamp song\n", 0,
     "song\n 1.000  ████████████████████  player  Music\n\n"
     "lamp song\n  nothing reaches the threshold\n\n",
     ""},

    {"every bad line is told", "--language enu --model . --rules bad.tsv", "", 1, "",
     "bad.tsv:2: no tab between rule id and sentence\n"
     "bad.tsv:4: empty sentence\n"
     "bad.tsv:3: rule id '2147483648' is no 32-bit whole number\n"},
    {"only unknown rules", "--language enu --model . --rules unknown.tsv", "", 1, "",
     "the model knows no word of any rule"},
    {"no such language", "--language xx --model . --rules rules.tsv", "", 1, "",
     "no model for language 'xx': looked in ./xx and "},
    {"neither rules nor applications", "--language enu", "", 2, "", "one of --rules and --apps"},
    {"list of ids that is none", std::string(kRules) + "--active 3,x", "", 2, "",
     "--active: 'x' is no rule id"},
    {"snapshot in another folder", std::string(kRules) + "--snapshot ../mine", "", 2, "",
     "'../mine' is no plain file name"},
};

void write_rules(const Workplace& place) {
  place.write("rules.tsv",
              "\xEF\xBB\xBF# lights\n\n20\tPlay music!\r\n3\tSwitch on the light.\n"
              "20\tand songs\n7\tUnknown.\n");
  place.write("bad.tsv", "1\tlamp\nlight\n2147483648\tlamp\n2\t \n");
  place.write("unknown.tsv", "1\tUnknown.\n");
  place.write("apps.tsv", "player\tMusic\nlantern\tLight\n");
}

TEST(Console, AnswersAndComplains) {
  const Workplace place;
  write_rules(place);
  for (const ConsoleCase& c : kCases) {
    SCOPED_TRACE(c.what);
    const ProgramResult result = place.run(VELMORA_CONSOLE, c.arguments, c.input);
    EXPECT_EQ(result.status, c.status);
    EXPECT_EQ(result.out, c.out);
    EXPECT_THAT(result.err, HasSubstr(c.err));
    EXPECT_THAT(result.err, Not(HasSubstr("LibVelmora")));
  }
}

TEST(Console, KeepsASnapshotUpToDate) {
  const Workplace place;
  write_rules(place);
  const std::string snapshot = "enu/model/mine";
  const auto start = [&] {
    const ProgramResult result =
        place.run(VELMORA_CONSOLE, std::string(kRules) + "--snapshot mine", "song\n");
    EXPECT_THAT(result.out, HasSubstr("1.000  ████████████████████  20  Play music!"));
    return result.err;
  };
  EXPECT_THAT(start(), HasSubstr("no snapshot yet, compiled: 2 rules in "));
  EXPECT_EQ(place.read(snapshot), place.read("enu/model/newindex"));
  EXPECT_THAT(start(), HasSubstr("warm start from ./enu/model/mine: 2 rules in "));

  // A rule that is new is compiled at the start.
  place.write("rules.tsv", "20\tPlay music!\n30\tA light and a song.\n");
  EXPECT_THAT(start(), HasSubstr("warm start"));
  EXPECT_THAT(place.read(snapshot), HasSubstr("light song"));

  // Vectors of an older model would give wrong scores.
  std::filesystem::last_write_time(
      place.path("enu/model/model"),
      std::filesystem::last_write_time(place.path(snapshot)) + std::chrono::seconds(1));
  EXPECT_THAT(start(), HasSubstr("older than the model"));
}

// script(1) gives the program a terminal.
TEST(Console, TalksToATerminal) {
  const Workplace place;
  write_rules(place);
  const std::string session = "-qec \"" VELMORA_CONSOLE " " + std::string(kRules) + "\" /dev/null";
  const std::string coloured = place.run("/usr/bin/script", session, "song\n").out;
  EXPECT_THAT(coloured, HasSubstr("Type a sentence; Ctrl-D ends."));
  EXPECT_THAT(coloured, HasSubstr("\033[32m████████████████████\033[0m  \033[1m20  Play music!"));
}

}  // namespace
