// Snapshot files: the bytes written, the records read back, and what damage does to them.
#include <cmath>
#include <iterator>
#include <numeric>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include <velmora/snapshot.hpp>

#include "kit/fixtures.hpp"
#include "snapshot/snapshot-reader.hpp"

namespace {

using namespace VX::Dialog;
using namespace test;
using Snapshot = std::map<std::vector<std::string>, std::vector<double>>;

const std::tuple<const char*, Vectors, Rules, std::map<int, int>, const char*> kWritten[] = {
    {"six digits in general notation",
     {{0.123456789, 0.00001, 1000000, -0.0, NAN, -INFINITY}},
     {{1, {}}},
     {{1, 0}},
     "0\n1\n\n0.123457 1e-05 1e+06 -0 nan -inf\n"},
    {"by row, with the stems of the first rule",
     {{1}, {2}, {3}},
     {{2, {"go", "up"}}, {3, {"in"}}, {5, {"off"}}},
     {{2, 2}, {3, 0}, {5, 2}},
     "0\n3\nin\n1\n2\n2 5\ngo up\n3\n"},
    {"rows beyond the table", {{1}}, {{1, {"go"}}}, {{1, 7}, {2, 7}}, "7\n1 2\ngo\n\n"},
    {"an empty table truncates", {{1}}, {{1, {"go"}}}, {}, ""},
};

TEST(WriteLs, WritesARecordForEachRow) {
  const TemporaryFolder folder;
  for (const auto& [what, vectors, words, rows, text] : kWritten) {
    write_ls(vectors, words, rows, folder.path("index"));
    EXPECT_EQ(folder.read("index"), text) << what;
  }
}

// The reading loop of the format, line by line through streams.
Snapshot slow_read(const std::string& text) {
  Snapshot records;
  std::istringstream in(text);
  int row = 0;
  for (std::string first; std::getline(in, first) && (std::istringstream(first) >> row);) {
    std::string ids, stems, values;
    std::getline(in, ids);
    std::getline(in, stems);
    std::getline(in, values);
    std::istringstream words(stems), numbers(values);
    const std::set<std::string> key{std::istream_iterator<std::string>(words), {}};
    records[{key.begin(), key.end()}] = {std::istream_iterator<double>(numbers), {}};
  }
  return records;
}

TEST(ReadSnapshot, ReadsDamagedFilesToTheFirstBrokenRecord) {
  const Lines whole = {"0", "3 7", "walk go", "0.123457 -0.5 1e-05 1", "10", "12", "up", "2 3 4 5"};
  const TemporaryFolder folder;
  const auto join = [](const Lines& lines) {
    return std::accumulate(lines.begin(), lines.end(), std::string(),
                           [](const auto& text, const auto& line) { return text + line + "\n"; });
  };
  std::vector<std::string> texts;
  for (std::size_t length = 0; length <= join(whole).size(); ++length) {
    texts.push_back(join(whole).substr(0, length));
  }
  for (std::size_t first = 0; first != whole.size(); ++first) {
    for (std::size_t second = 0; second != first; ++second) {
      Lines lines = whole;
      std::swap(lines[first], lines[second]);
      texts.push_back(join(lines));
    }
    for (const char* line : {"", "\t ", "up", "up go up", "4x 5", " +7 .5", "99999999999 1",
                             "1 nan 2", "1 -inf", "1 1e999 2", "1e-400", "0x10", "1\r", "1,5 2"}) {
      Lines lines = whole;
      lines[first] = line;
      texts.push_back(join(lines));
    }
  }
  for (const std::string& text : texts) {
    EXPECT_EQ(detail::read_snapshot(folder.write("index", text)), slow_read(text)) << text;
  }
  EXPECT_EQ(detail::read_snapshot(folder.path("none")), Snapshot());
  EXPECT_EQ(detail::read_snapshot(folder.path()), Snapshot());
}

}  // namespace
