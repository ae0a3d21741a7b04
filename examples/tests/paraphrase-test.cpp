// Whether the bundled models understand what people say instead of the sentences of a rule.
//
// rules/household-<language>.tsv is the dialogue, paraphrases-<language>.tsv the sentences; both
// were written before any model was tried on them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include <fennel/stemmer.hpp>
#include <velmora/velmora.hpp>
#include <zu/log.hpp>
#include <zu/path.hpp>

#include "table-file.hpp"

namespace {

using Rules = std::map<int, std::vector<std::string>>;
using StemSet = std::set<std::string>;

constexpr int kParaphrases = 20;
constexpr int kUnderstood = 16;

struct Dialogue {
  Rules rules;
  /// Rule id to what people say instead.
  Rules paraphrases;
};

Dialogue read_dialogue(const std::string& language) {
  const std::string folder = EXAMPLES_DIR;
  Dialogue dialogue;
  EXPECT_TRUE(
      read_numbered_sentences(folder + "/rules/household-" + language + ".tsv", dialogue.rules));
  EXPECT_TRUE(read_numbered_sentences(folder + "/tests/paraphrases-" + language + ".tsv",
                                      dialogue.paraphrases));
  return dialogue;
}

StemSet stems_of(VX::Dialog::Stemmer& stemmer, const std::vector<std::string>& sentences) {
  StemSet all;
  for (const std::string& sentence : sentences) {
    std::vector<std::string> stems;
    stemmer.stem_sentence(sentence, stems);
    all.insert(stems.begin(), stems.end());
  }
  return all;
}

StemSet function_words(VX::Dialog::Stemmer& stemmer, const std::string& language) {
  std::map<std::string, std::vector<std::string>> words;
  EXPECT_TRUE(read_named_sentences(EXAMPLES_DIR "/tests/function-words.tsv", "language", words));
  return stems_of(stemmer, words[language]);
}

StemSet without(const StemSet& stems, const StemSet& dropped) {
  StemSet rest;
  std::set_difference(stems.begin(), stems.end(), dropped.begin(), dropped.end(),
                      std::inserter(rest, rest.end()));
  return rest;
}

class Paraphrases : public ::testing::TestWithParam<const char*> {};

// A paraphrase that repeats its rule would test nothing.
TEST_P(Paraphrases, ShareAtMostHalfOfTheirContentWords) {
  const std::string language = GetParam();
  VX::Dialog::Stemmer stemmer(language);
  const Dialogue dialogue = read_dialogue(language);
  const StemSet dropped = function_words(stemmer, language);
  int count = 0;
  for (const auto& [rule_id, sentences] : dialogue.paraphrases) {
    const StemSet rule = without(stems_of(stemmer, dialogue.rules.at(rule_id)), dropped);
    for (const std::string& sentence : sentences) {
      const StemSet content = without(stems_of(stemmer, {sentence}), dropped);
      const std::size_t own = without(content, rule).size();
      EXPECT_GE(2 * own, content.size()) << sentence;
      EXPECT_GE(own, 1u) << sentence;
      ++count;
    }
  }
  EXPECT_EQ(count, kParaphrases);
}

TEST_P(Paraphrases, AreUnderstood) {
  std::string language = GetParam();
  const std::string data = zu::path::findData("dialog", "velmora/data/" + language + "/model/");
  if (!std::filesystem::exists(data)) {
    GTEST_SKIP() << "no model for " << language << ": data/" << language << "/model is missing";
  }
  zu::log::setLevel(zu::log::Level::error);
  const Dialogue dialogue = read_dialogue(language);
  VX::Dialog::Velmora matcher;
  std::string base = "models";
  std::string unused;
  ASSERT_TRUE(matcher.setModel(base, language));
  ASSERT_TRUE(matcher.loadDialogVectors(unused, dialogue.rules));
  matcher.activeAllRules(unused);

  int understood = 0;
  std::string missed;
  for (const auto& [rule_id, sentences] : dialogue.paraphrases) {
    for (const std::string& sentence : sentences) {
      std::vector<std::pair<double, std::vector<int>>> matches;
      ASSERT_EQ(matcher.matchInput(sentence, matches, unused), 1);
      const std::vector<int>& best = matches.front().second;
      if (best == std::vector<int>{rule_id}) {
        ++understood;
      } else {
        missed += "\n  " + sentence + " -> " + dialogue.rules.at(best.front()).front();
      }
    }
  }
  RecordProperty("understood", understood);
  std::cout << language << ": " << understood << " of " << kParaphrases << missed << "\n";
  EXPECT_GE(understood, kUnderstood);
}

INSTANTIATE_TEST_SUITE_P(Languages, Paraphrases, ::testing::Values("enu", "frf", "jpj"),
                         [](const auto& language) { return std::string(language.param); });

}  // namespace
