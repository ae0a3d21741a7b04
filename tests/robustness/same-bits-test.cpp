// Scores to the last bit: the same with every compiler, at every level of optimisation and on every
// machine.
#include <bit>
#include <cstdint>
#include <random>

#include <gtest/gtest.h>

#include <velmora/velmora.hpp>

#include "kit/fixtures.hpp"

namespace {

using namespace test;

constexpr int kWordCount = 300;
constexpr int kDim = 40;

class FixedInput {
 public:
  // The distributions of the standard library differ from one library to the next, their engine
  // does not.
  int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

  std::string sentence(int most_words) {
    std::string text;
    for (int count = 1 + below(most_words); count > 0; --count) {
      text += "w" + std::to_string(below(kWordCount)) + " ";
    }
    return text;
  }

  void write_model(const TemporaryFolder& folder) {
    std::string dictionary;
    std::string idf;
    std::string factors = std::to_string(kWordCount) + " " + std::to_string(kDim) + "\n";
    for (int word_id = 0; word_id != kWordCount; ++word_id) {
      dictionary += "w" + std::to_string(word_id) + "\n";
      idf += std::to_string(word_id) + " 1." + std::to_string(below(1000)) + "\n";
      for (int d = 0; d != kDim; ++d) {
        factors += std::to_string(below(19) - 9) + " ";
      }
      factors += "\n";
    }
    folder.write(kLanguage + "/model/dictionary", dictionary);
    folder.write(kLanguage + "/model/idf", idf);
    folder.write(kLanguage + "/model/model", std::to_string(kDim) + "\n60\n0.01\n");
    folder.write(kLanguage + "/model/model.conf", factors);
  }

 private:
  std::mt19937 random_{1};
};

void add_to_digest(std::uint64_t& digest, std::uint64_t number) {
  digest = (digest ^ number) * 1099511628211U;
}

TEST(SameBits, OfScores) {
  const TemporaryFolder folder;
  const LogCapture quiet;
  FixedInput input;
  input.write_model(folder);
  Rules rules;
  for (int rule_id = 0; rule_id != 200; ++rule_id) {
    rules[rule_id] = {input.sentence(10)};
  }
  VX::Dialog::Velmora matcher;
  std::string base = folder.path();
  std::string language = kLanguage;
  std::string unused;
  ASSERT_TRUE(matcher.setModel(base, language));
  ASSERT_TRUE(matcher.loadDialogVectors(unused, rules));
  matcher.activeAllRules(unused);

  std::uint64_t digest = 0;
  for (int sentence = 0; sentence != 100; ++sentence) {
    Matches matches;
    // Long sentences, too: they are folded in by a larger system of equations.
    ASSERT_EQ(matcher.matchInput(input.sentence(sentence % 10 == 0 ? 100 : 12), matches, unused),
              1);
    for (const auto& [score, rule_ids] : matches) {
      add_to_digest(digest, std::bit_cast<std::uint64_t>(score));
      for (const int rule_id : rule_ids) {
        add_to_digest(digest, static_cast<std::uint64_t>(rule_id));
      }
    }
  }
  // A change that alters rounding on purpose changes this number: for every compiler alike.
  EXPECT_EQ(digest, 3541164857365835604U);
}

}  // namespace
