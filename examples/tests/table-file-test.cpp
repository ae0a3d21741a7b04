// Text tables as people write them: with an editor's marks, and with mistakes.
#include "table-file.hpp"

#include <gtest/gtest.h>

#include "program-run.hpp"

namespace {

struct TableCase {
  const char* what;
  const char* text;
  /// Number and fields of each record, joined by '|'.
  std::vector<std::string> records;
  std::vector<std::string> errors;
};

const TableCase kTables[] = {
    {"comments and blank lines count as lines",
     "# a\n\na\tb\n \t \n c \t d \n",
     {"3|a|b", "5|c|d"},
     {}},
    {"marks of editors",
     "\xEF\xBB\xBF"
     "a\tb\r\nc\td",
     {"1|a|b", "2|c|d"},
     {}},
    {"tabs of the last field are its own", "a\tb\tc\n", {"1|a|b\tc"}, {}},
    {"a bad line does not hide the next",
     "a\na\tb\n\tb\n",
     {"2|a|b"},
     {":1: no tab between first and second", ":3: empty first"}},
    {"an empty field", "a \t\t b\n \t", {"1|a|b"}, {}},
    {"comments alone", "# a\tb\n", {}, {": nothing in the file"}},
};

TEST(TableFile, ReadsRecordsAndTellsErrors) {
  const Workplace place;
  for (const TableCase& c : kTables) {
    SCOPED_TRACE(c.what);
    place.write("table", c.text);
    const std::string path = place.path("table").string();
    const Table table = read_table(path, {"first", "second"});
    std::vector<std::string> records;
    for (const TableLine& line : table.lines) {
      std::string record = std::to_string(line.number);
      for (const std::string& field : line.fields) {
        record += "|" + field;
      }
      records.push_back(record);
    }
    EXPECT_EQ(records, c.records);
    std::vector<std::string> errors;
    for (const std::string& error : c.errors) {
      errors.push_back(path + error);
    }
    EXPECT_EQ(table.errors, errors);
  }
}

TEST(TableFile, NumbersAreWholeAndFit) {
  const Workplace place;
  std::map<int, std::vector<std::string>> sentences;
  const std::string path = place.path("rules").string();
  place.write("rules", "-2147483648\tleast\n2147483647\tmost\n");
  EXPECT_TRUE(read_numbered_sentences(path, sentences));
  EXPECT_EQ(sentences.begin()->first, -2147483647 - 1);
  for (const char* bad : {"2147483648\ta\n", "1.5\ta\n", "one\ta\n", "1 2\ta\n"}) {
    place.write("rules", bad);
    EXPECT_FALSE(read_numbered_sentences(path, sentences)) << bad;
  }
}

}  // namespace
