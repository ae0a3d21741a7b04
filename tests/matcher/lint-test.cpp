// Faults of rules that lint finds, each in a set of rules that has nothing else.
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/lint.hpp>

#include "kit/random-sentences.hpp"
#include "kit/small-model.hpp"
#include "matcher/compilation.hpp"

namespace {

using namespace test;

std::vector<std::string> findings_of(const std::vector<velmora::Rule>& rules) {
  std::vector<std::string> findings;
  for (const velmora::Finding& finding : velmora::lint({small_model(), rules})) {
    std::string text = std::string(name_of(finding.kind)) + " " + std::to_string(finding.rule) +
                       "." + std::to_string(finding.sentence);
    if (finding.other) {
      text += " " + std::to_string(*finding.other) + "." + std::to_string(*finding.other_sentence);
    }
    findings.push_back(text);
  }
  return findings;
}

struct LintCase {
  const char* what;
  std::vector<velmora::Rule> rules;
  std::vector<std::string> findings;
};

TEST(Lint, FindsEachFault) {
  const LintCase cases[] = {
      {"nothing wrong", {{1, {"go up", "go"}}, {2, {"stop"}}}, {}},
      {"no known word", {{1, {"jump"}}, {2, {"stop"}}}, {"no_known_word 1.0"}},
      // Told once a rule, where it comes first.
      {"an unknown word", {{1, {"go up jump", "jump up"}}, {2, {"stop"}}}, {"unknown_word 1.0"}},
      {"most words unknown", {{1, {"va en haut stop"}}, {2, {"go"}}}, {"other_language 1.0"}},
      {"the same words in one rule",
       {{1, {"go up", "stop", "up, go!"}}, {2, {"walk"}}},
       {"duplicate_sentence 1.2 1.0"}},
      {"the same words in two rules",
       {{1, {"go up"}}, {2, {"stop", "up go"}}},
       {"same_words 1.0 2.1", "same_words 2.1 1.0"}},
      {"nothing but marks", {{1, {"?!"}}, {2, {"stop"}}}, {"empty_sentence 1.0"}},
      {"ill-formed", {{1, {"go \xFF"}}, {2, {"stop"}}}, {"not_utf8 1.0"}},
      // One letter apart, and the word is not in the dictionary.
      {"hardly to be told apart",
       {{1, {"go walk up supercalifragilistic"}}, {2, {"go walk supercalifragilistic"}}},
       {"unknown_word 1.0", "too_close 1.0 2.0", "unknown_word 2.0", "too_close 2.0 1.0"}},
  };
  for (const LintCase& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(findings_of(c.rules), c.findings);
  }
}

TEST(Lint, ASentenceThatFindsAnotherRule) {
  // The centre of rule 2 is "go", and "stop" is lost in it; rule 3 is nothing but "stop up".
  const std::vector<std::string> findings =
      findings_of({{2, {"go", "go go up", "stop", "go walk"}}, {3, {"stop up", "up stop up"}}});
  EXPECT_THAT(findings, testing::Contains(testing::HasSubstr("finds_another_rule 2.2 3.")));
}

// For each sentence the closest of another rule with other words, found by looking at every pair.
std::map<std::size_t, std::size_t> too_close_pairs(const velmora::detail::MatcherData& data) {
  std::map<std::size_t, std::size_t> found;
  for (std::size_t j = 0; j != data.sentence_count(); ++j) {
    double closest = 0.9;
    for (std::size_t other = 0; other != data.sentence_count(); ++other) {
      const auto latent = [&](std::size_t s) {
        return data.sentences.latent.col(static_cast<Eigen::Index>(s));
      };
      const double similarity =
          0.4 * latent(j).dot(latent(other)) +
          0.3 * velmora::detail::dot(data.sentences.words[j], data.sentences.words[other]) +
          0.3 *
              velmora::detail::dot(data.sentences.characters[j], data.sentences.characters[other]);
      if (similarity >= closest && data.rule_of[j] != data.rule_of[other] &&
          data.texts[j].stems != data.texts[other].stems) {
        closest = similarity;
        found[j] = other;
      }
    }
  }
  return found;
}

TEST(Lint, FindsWhatIsTooCloseAmongMany) {
  const velmora::Model model = velmora::Model::installed("enu");
  RandomSentences random(model, 1);
  std::vector<velmora::Rule> rules = random.rules(60, 6);
  for (int id = 61; id <= 80; ++id) {  // a word more than a sentence of another rule
    const std::vector<std::string>& of =
        rules[static_cast<std::size_t>(random.number(0, 59))].sentences;
    rules.push_back({id, {of.back() + " " + random.sentence(), "please " + of.front()}});
  }
  const velmora::Matcher matcher(model, rules);
  const velmora::detail::MatcherData& data = matcher.data();
  std::map<std::size_t, std::size_t> found;
  for (const velmora::Finding& finding : velmora::lint(matcher)) {
    if (finding.kind == velmora::FindingKind::too_close) {
      found[data.first_sentence[data.place_of(finding.rule)] + finding.sentence] =
          data.first_sentence[data.place_of(finding.other.value())] +
          finding.other_sentence.value();
    }
  }
  EXPECT_GE(found.size(), 10U);
  EXPECT_EQ(found, too_close_pairs(data));
}

}  // namespace
