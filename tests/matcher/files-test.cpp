// Rules files and expectations files: what is read, and what is said about what cannot be.
#include <gtest/gtest.h>

#include <velmora/evaluation.hpp>
#include <velmora/rules.hpp>

#include "kit/small-model.hpp"
#include "support/utf8.hpp"

namespace {

using namespace test;

TEST(RulesFile, LinesWithOneIdMakeOneRule) {
  const TemporaryFolder folder;
  const std::string path = folder.write("rules",
                                        "\xEF\xBB\xBF# lights\r\n"
                                        "302\t play  some music \r\n"
                                        "\n"
                                        " -7\tlight\tup\n"
                                        "302\tmusic");  // no newline at the end
  const std::vector<velmora::Rule> rules = velmora::read_rules(path);
  ASSERT_EQ(rules.size(), 2U);
  EXPECT_EQ(rules[0].id, 302);
  EXPECT_EQ(rules[0].sentences, (Lines{"play  some music", "music"}));
  EXPECT_EQ(rules[0].lines, (std::vector<std::size_t>{2, 5}));
  EXPECT_EQ(rules[1].id, -7);
  EXPECT_EQ(rules[1].sentences, Lines{"light\tup"});
}

TEST(ExpectationsFile, ADashExpectsNoRule) {
  const TemporaryFolder folder;
  const auto expectations =
      velmora::read_expectations(folder.write("expect", "7\twalk\n# -\n-\tsleep\n"));
  ASSERT_EQ(expectations.size(), 2U);
  EXPECT_EQ(expectations[0].id, 7);
  EXPECT_EQ(expectations[1].id, std::nullopt);
  EXPECT_EQ(expectations[1].sentence, "sleep");
  EXPECT_EQ(expectations[1].line, 3U);
}

struct FileCase {
  const char* text;
  const char* rules_message;
  const char* expectations_message;  // null: the same
};

const FileCase kFileCases[] = {
    {"", "f: nothing in it: expected lines of an id, a tab and a sentence", nullptr},
    {"\n# none\n", "f: nothing in it: expected lines of an id, a tab and a sentence", nullptr},
    {"1 go\n", "f:1: no tab: expected an id, a tab and a sentence", nullptr},
    {"1\tgo\n2\t \r\n", "f:2: nothing after the tab: expected a sentence", nullptr},
    {"1\tcaf\xE9\n", "f:1: ill-formed UTF-8: expected a text in UTF-8", nullptr},
    {"1x\tgo\n", "f:1: '1x' before the tab: expected a rule id, a whole number of 32 bits",
     "f:1: '1x' before the tab: expected a rule id, a whole number of 32 bits, or - for no rule"},
    {"2147483648\tgo\n",
     "f:1: '2147483648' before the tab: expected a rule id, a whole number of 32 bits",
     "f:1: '2147483648' before the tab: expected a rule id, a whole number of 32 bits, or - for no "
     "rule"},
    // Several bad lines are told at once.
    {"go\n1\tgo\nup\n",
     "f:1: no tab: expected an id, a tab and a sentence\n"
     "f:3: no tab: expected an id, a tab and a sentence",
     nullptr},
};

TEST(Files, ErrorsNameFileLineAndWhatWasExpected) {
  for (const FileCase& c : kFileCases) {
    SCOPED_TRACE(c.rules_message);
    const TemporaryFolder folder;
    const std::string path = folder.write("f", c.text);
    EXPECT_EQ(error_of([&] { velmora::read_rules(path); }, folder.path()), c.rules_message);
    EXPECT_EQ(error_of([&] { velmora::read_expectations(path); }, folder.path()),
              c.expectations_message != nullptr ? c.expectations_message : c.rules_message);
  }
}

TEST(Files, FoldersAndMissingFilesAreNamedAsSuch) {
  const TemporaryFolder folder;
  EXPECT_EQ(error_of([&] { velmora::read_rules(folder.path()); }),
            folder.path() + ": is a folder: expected a file");
  EXPECT_EQ(error_of([&] { velmora::read_rules(folder.path("none")); }, folder.path()),
            "none: cannot be read: No such file or directory");
}

struct Utf8Case {
  const char* text;
  bool well_formed;
};

TEST(Utf8, IsWhatTheStandardAllows) {
  const Utf8Case cases[] = {
      {"", true},
      {"caf\u00E9 \u3042 \U0001F600", true},
      {"\xF4\x8F\xBF\xBF", true},   // U+10FFFF
      {"\xF4\x90\x80\x80", false},  // one more
      {"\x80", false},              // a byte that begins nothing
      {"\xC3", false},              // cut
      {"\xE3\x81\x61", false},      // cut by a letter
      {"\xC0\x80", false},          // two bytes for what needs one
      {"\xE0\x80\x80", false},      // three
      {"\xF0\x80\x80\x80", false},  // four
      {"\xED\xA0\x80", false},      // a surrogate
      {"\xFF\xBF", false},
  };
  for (const Utf8Case& c : cases) {
    EXPECT_EQ(VX::Dialog::detail::is_utf8(c.text), c.well_formed) << testing::PrintToString(c.text);
  }
}

}  // namespace
