// Japanese base forms with a dictionary, and what happens without one.
#include "japanese.hpp"

#include <algorithm>
#include <numeric>

#include <gtest/gtest.h>

#include <fennel/stemmer.hpp>
#include <zu/log.hpp>

// Stands in for the C library's, to notice when MeCab reads beyond the text that it was given.
static std::size_t longest_string = 0;
extern "C" std::size_t strlen(const char* text) noexcept {
  const volatile char* end = text;  // volatile: the loop stays a loop, and no call of strlen
  while (*end != '\0') {
    ++end;
  }
  const auto length = static_cast<std::size_t>(end - text);
  longest_string = std::max(longest_string, length);
  return length;
}

namespace VX::Dialog::fennel {
namespace {

using Stems = std::vector<std::string>;

const std::tuple<const char*, const char*, Stems> kSentences[] = {
    {"base forms, no particles, no auxiliaries", "パンを食べました。", {"パン", "食べる"}},
    {"inflections meet", "走って、走る", {"走る", "走る"}},
    {"half-width katakana, ideographic blank", "ﾊﾟｿｺﾝ　買う", {"パソコン", "買う"}},
    {"numbers are joined", "1,000円と3.14、１２と三十", {"1,000", "円", "3.14", "12", "三十"}},
    {"but not over a blank", "10 20. 30", {"10", "20", "30"}},
    {"Latin words and symbols", "ABC123 C++ ☆ α版", {"abc", "123", "c", "α", "版"}},
    {"unknown characters do not stick together", "ก\u0085ข\uFFFDค", {"ก", "ข", "ค"}},
    {"nothing", "。、 はがを", {}},
};

TEST(Japanese, GivesBaseForms) {
  Stemmer stemmer("jpj");
  for (const auto& [what, sentence, expected] : kSentences) {
    Stems stems = {"before"};
    stemmer.stem_sentence(sentence, stems);
    EXPECT_EQ(stems, expected) << what;
  }
}

// A long text goes to the dictionary in parts, which end where no word does if there is such a
// place.
TEST(Japanese, LongTextsLoseNoWord) {
  Stemmer stemmer("jpj");
  for (const std::string sentence : {"パンを食べる。", "パンを食べる、", "パンを食べる ", "猫"}) {
    constexpr std::ptrdiff_t kTimes = 20'000;
    std::string text;
    for (int i = 0; i != kTimes; ++i) {
      text += sentence;
    }
    Stems stems;
    stemmer.stem_sentence(text, stems);
    EXPECT_EQ(std::count(stems.begin(), stems.end(), sentence == "猫" ? "猫" : "食べる"), kTimes);
  }
}

// Else the time grows with the square of the length.
TEST(Japanese, NoPartOfALongTextReadsTheRestOfIt) {
  Stemmer stemmer("jpj");
  std::string text;
  while (text.size() < 20'000) {
    text += "パン ";
  }
  Stems stems;
  longest_string = 0;
  stemmer.stem_sentence(text, stems);
  EXPECT_LE(longest_string, 1024U);
}

// A dictionary that cannot be opened is passed over; without any there is one line of warning.
TEST(Japanese, AMissingDictionaryIsLoggedOnce) {
  std::vector<zu::log::Record> records;
  const int id = zu::log::addHandler([&](const zu::log::Record& r) { records.push_back(r); });
  const std::string missing = "-r /dev/null -d /no-such-dictionary";
  EXPECT_NE(open_dictionary({missing, "-r /dev/null -d /var/lib/mecab/dic/ipadic-utf8"}), nullptr);
  EXPECT_TRUE(records.empty());
  EXPECT_EQ(open_dictionary({missing, missing}), nullptr);
  zu::log::removeHandler(id);
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].category, "Fennel.Stemmer");
  EXPECT_EQ(records[0].level, zu::log::Level::warning);
}

}  // namespace
}  // namespace VX::Dialog::fennel
