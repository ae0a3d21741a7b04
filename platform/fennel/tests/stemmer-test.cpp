// Sentences and their stems: the rules of each language, and input that is long.
//
// Models are built from these stems: a row that has to change asks for new models.
#include <malloc.h>

#include <random>
#include <thread>

#include <gtest/gtest.h>

#include <fennel/stemmer.hpp>

namespace VX::Dialog {
namespace {

// The stems of one sentence, joined by blanks, which no stem may hold.
std::string stems_of(Stemmer& stemmer, const std::string& sentence) {
  std::vector<std::string> stems = {"what", "was", "here", "before"};
  stemmer.stem_sentence(sentence, stems);
  std::string joined;
  for (const std::string& stem : stems) {
    EXPECT_FALSE(stem.empty());
    EXPECT_EQ(stem.find_first_of(" \t\r\n\v\f"), std::string::npos) << stem;
    joined += (joined.empty() ? "" : " ") + stem;
  }
  return joined;
}

const std::tuple<const char*, std::string, const char*> kStemCases[] = {
    // Words: case, hyphens, underscores, abbreviations, numbers, symbols.
    {"enu", "The BOOKS were running; state-of-the-art!", "the book were run state of the art"},
    {"enu", "hello.how are foo_bar a:b", "hello how are foo bar a b"},
    {"enu", "the U.S.A. and e.g. a.m.", "the usa and eg am"},
    {"enu", "1,000.50 or 3rd, 10:30; 5'3 2.b", "1,000.50 or 3rd 10 30 5 3 2 b"},
    {"enu", "yes \U0001F600 \u2713 3\uFE0F\u20E3 + - ...", "yes 3"},
    // Normalisation: full width, ligature, decomposed accent, soft hyphen, trade mark, superscript.
    {"enu", "\uFF28\uFF45\uFF59 \uFB01ne cafe\u0301 co\u00ADop velmora\u2122 x\u00B2",
     "hey fine caf\u00E9 coop velmora x2"},
    // English contractions, with every apostrophe there is.
    {"enu", "don't don\u2019t don\u00B4t don`t don\uFF07t dont",
     "do not do not do not do not do not do not"},
    {"enu", "can't won't shan't cannot couldn't've",
     "can not will not shall not can not could not have"},
    {"enu", "I'm you're we've they'll I'd let's", "i am you are we have they will i would let us"},
    {"enu", "it's what's John's dogs' 1990's", "it is what is john dog 1990"},
    {"enu", "o'clock rock'n'roll 'quoted'", "oclock rocknrol quot"},
    // French elisions, inversions, ligatures.
    {"frf", "l'homme qu\u2019il aime aujourd'hui", "le homm que il aim aujourdhui"},
    {"frf", "d'abord j'ai c'est n'est s'est m'a t'es",
     "de abord je ai ce est ne est se est me a te e"},
    {"frf", "s'il vous pla\u00EEt jusqu'\u00E0 lorsqu'elle quelqu'un",
     "si il vous pla\u00EEt jusqu \u00E0 lorsqu elle quelqu un"},
    {"frf", "Y a-t-il un c\u0153ur ? Donnez-moi 3,14 \u20AC", "y a il un coeur don moi 3,14"},
    // Scripts without blanks are cut by ICU; a code that nobody knows gets words as they are.
    {"enu", "\u0E44\u0E17\u0E22\u0E20\u0E32\u0E29\u0E32",
     "\u0E44\u0E17\u0E22 \u0E20\u0E32\u0E29\u0E32"},
    {"xyz", "Don't RUN running Stra\u00DFe", "don't run running strasse"},
    {"", "\u65E5\u672C\u8A9E\u3092\u52C9\u5F37", "\u65E5\u672C\u8A9E \u3092 \u52C9\u5F37"},
    // Nothing, blanks of all kinds, a NUL, bytes that are not UTF-8.
    {"enu", "", ""},
    {"enu", "one\u00A0two\u2028three\u3000four\tfive", "one two three four five"},
    {"enu", std::string("one\0two", 7), "one two"},
    {"enu", "one\xFFtwo \xC3 three\xE2\x80", "one two three"},
};

TEST(Stemmer, FollowsTheRulesOfItsLanguage) {
  for (const auto& [language, sentence, stems] : kStemCases) {
    Stemmer stemmer(language);
    EXPECT_EQ(stems_of(stemmer, sentence), stems) << language << ": " << sentence;
  }
}

// Simple text goes around ICU's word breaking; an ideographic full stop at the end, which yields
// no stem, sends the same text through it.
TEST(Stemmer, TheShortRoadGivesTheSameStems) {
  const char* const pieces[] = {"a",      "b", "S",      "t",  "don", "1",     "23", ".",
                                ",",      "`", "'",      "-",  "_",   ":",     ";",  "\u2019",
                                "\u00E9", "/", "\u00AD", "\n", " ",   "\u00B7"};
  std::mt19937 random(1);
  for (const char* language : {"enu", "frf", "xyz"}) {
    Stemmer stemmer(language);
    for (int round = 0; round != 10000; ++round) {
      std::string sentence;
      for (int count = 0; count != 12; ++count) {
        sentence += pieces[random() % std::size(pieces)];
      }
      ASSERT_EQ(stems_of(stemmer, sentence), stems_of(stemmer, sentence + " \u3002"))
          << language << ": " << sentence;
    }
  }
}

std::string repeated(const std::string& piece, std::size_t size) {
  std::string text;
  while (text.size() < size) {
    text += piece;
  }
  return text;
}

// Memory is measured by what the C library has handed out; libraries of the stemmer use it, too.
std::size_t bytes_in_use() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

TEST(Stemmer, KeepsNoMemoryOfALongSentence) {
  const std::tuple<const char*, const char*> kinds[] = {
      {"enu", "word "},
      {"frf", "caf\u00E9 "},
      {"enu", "\u0E44\u0E17\u0E22\u0E20\u0E32\u0E29\u0E32"},  // in which ICU looks for words
      {"jpj", "\u30D1\u30F3\u3092\u98DF\u3079\u305F\u3002"},
  };
  for (const auto& [language, piece] : kinds) {
    Stemmer stemmer(language);
    (void)stems_of(stemmer, piece);
    const std::size_t before = bytes_in_use();
    (void)stems_of(stemmer, repeated(piece, 2'000'000));
    EXPECT_LT(bytes_in_use(), before + 200'000) << language << ": " << piece;
  }
}

TEST(Stemmer, DifferentObjectsWorkAtTheSameTime) {
  std::vector<std::jthread> threads;
  for (const char* language : {"enu", "frf", "jpj", "jpj"}) {
    threads.emplace_back([language] {
      const std::string sentence = "l'eau don't \u98DF\u3079\u305F";
      Stemmer first(language);
      const std::string expected = stems_of(first, sentence);
      for (int round = 0; round != 200; ++round) {
        Stemmer stemmer(language);
        ASSERT_EQ(stems_of(stemmer, sentence), expected);
      }
    });
  }
}

}  // namespace
}  // namespace VX::Dialog
