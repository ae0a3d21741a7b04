// The parts of an explanation add up to the score, over all bundled models.
#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/matcher.hpp>

#include "kit/random-sentences.hpp"
#include "kit/small-model.hpp"

namespace {

using namespace test;
using velmora::Explanation;
using velmora::Matcher;
using velmora::Model;
using velmora::WordPair;

double sum_of(const Explanation& explanation) {
  double sum = 0.0;
  for (const WordPair& pair : explanation.pairs) {
    sum += pair.total();
  }
  return sum;
}

class Explanations : public testing::TestWithParam<const char*> {};

TEST_P(Explanations, AddUpToTheScore) {
  const Model model = Model::installed(GetParam());
  for (const unsigned seed : {1U, 2U, 3U}) {
    SCOPED_TRACE(seed);
    RandomSentences random(model, seed);
    velmora::ScoreOptions options;
    options.kernel_sentences = seed == 3 ? 0 : 1000;
    const Matcher matcher(model, random.rules(10, 20), options);
    const velmora::ActiveRules active = matcher.activate({1, 2, 3});
    for (int round = 0; round != 5; ++round) {
      const std::string sentence = random.sentence();
      velmora::MatchOptions match_options;
      match_options.top = 10;
      match_options.active = round % 2 == 0 ? &active : nullptr;
      for (const velmora::Match& match : matcher.match(sentence, match_options).matches) {
        const Explanation explanation = matcher.explain(sentence, match.id, match_options.active);
        EXPECT_EQ(explanation.score, match.score);
        EXPECT_EQ(explanation.sentence, match.sentence);
        EXPECT_NEAR(sum_of(explanation), match.score, 1e-12) << sentence << " / " << match.id;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Languages, Explanations, testing::Values("enu", "frf", "jpj"));

TEST(Explanation, NamesWordsOfBothSides) {
  const Matcher matcher(small_model(), {{1, {"walking to Blorp", "go"}}, {2, {"stop", "up"}}});
  const Explanation explanation = matcher.explain("walked, Blorp xyzzy blorp", 1);
  ASSERT_FALSE(explanation.pairs.empty());
  EXPECT_EQ(explanation.id, 1);
  EXPECT_EQ(explanation.unknown, Lines{"xyzzi"});
  bool same_word = false;
  for (const WordPair& pair : explanation.pairs) {
    EXPECT_THAT(pair.query_word, testing::AnyOf("walk", "blorp", "xyzzi"));
    EXPECT_THAT(pair.rule_word, testing::AnyOf("walk", "to", "blorp", "go", ""));
    if (pair.query_word == "blorp") {
      EXPECT_EQ(pair.latent, 0.0) << "the model does not know it";
      same_word = same_word || (pair.rule_word == "blorp" && pair.words > 0.0);
    }
  }
  EXPECT_TRUE(same_word);
  EXPECT_TRUE(std::is_sorted(explanation.pairs.begin(), explanation.pairs.end(),
                             [](const WordPair& a, const WordPair& b) {
                               return std::abs(a.total()) > std::abs(b.total());
                             }));
}

}  // namespace
