// Japanese base forms with a dictionary, and what happens without one.
#include <gtest/gtest.h>

#include <fennel/stemmer.hpp>
#include <fstream>
#include <zu/log.hpp>

#include "japanese.hpp"

namespace VX::Dialog::fennel {
namespace {

using Stems = std::vector<std::string>;

struct JapaneseCase {
  const char* what;
  const char* sentence;
  Stems stems;
};

const JapaneseCase kJapaneseCases[] = {
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
  for (const JapaneseCase& c : kJapaneseCases) {
    SCOPED_TRACE(c.what);
    Stems stems = {"before"};
    stemmer.stem_sentence(c.sentence, stems);
    EXPECT_EQ(stems, c.stems);
  }
}

// Longer than what is analysed at once, with and without a place to cut.
TEST(Japanese, LongTextLosesNothing) {
  Stemmer stemmer("jpj");
  std::string sentences;
  std::string one_run;
  for (int count = 0; count != 1000; ++count) {
    sentences += "パンを食べた。";
    one_run += "あ";
  }
  Stems stems;
  stemmer.stem_sentence(sentences, stems);
  ASSERT_EQ(stems.size(), 2000U);
  for (std::size_t index = 0; index != stems.size(); ++index) {
    ASSERT_EQ(stems[index], index % 2 == 0 ? "パン" : "食べる");
  }
  stemmer.stem_sentence(one_run, stems);
  std::string joined;
  for (const std::string& stem : stems) {
    joined += stem;
  }
  EXPECT_EQ(joined, one_run);
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

// The encoding of the older IPA dictionary would make unreadable stems.
TEST(Japanese, ADictionaryOfAnotherKindIsPassedOver) {
  const std::string euc_jp = "/var/lib/mecab/dic/ipadic";
  if (!std::ifstream(euc_jp + "/sys.dic")) {
    GTEST_SKIP() << "needs " << euc_jp;
  }
  EXPECT_EQ(open_dictionary({"-r /dev/null -d " + euc_jp}), nullptr);
}

}  // namespace
}  // namespace VX::Dialog::fennel
