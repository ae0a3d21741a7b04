// The engine's own computation against the exported chain of functions: the same vectors to 1e-12
// of their length, the same ranking, rows and log lines, over random models, rules and sentences,
// damaged ones included, and with fields written by hand between two matches.
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "engine/velmora-private.hpp"
#include "kit/exported-chain.hpp"
#include "kit/fixtures.hpp"

namespace {

using namespace VX::Dialog;
using namespace test;

class RandomInput {
 public:
  explicit RandomInput(unsigned seed) : random_(seed) {}

  int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
  bool once_in(int times) { return below(times) == 0; }
  template <typename Table>
  std::size_t index(const Table& table) {
    return static_cast<std::size_t>(below(static_cast<int>(table.size())));
  }
  double one_of(std::initializer_list<double> values) {
    return values.begin()[below(static_cast<int>(values.size()))];
  }

  std::string sentence(int words) {
    std::string text;
    for (int count = below(5); count > 0; --count) {
      text += word(below(words + 2)) + " ";  // two words are in no dictionary
    }
    return text;
  }

  static std::string word(int number) {
    return std::string(2 + static_cast<std::size_t>(number / 26),
                       static_cast<char>('a' + number % 26));
  }

  // A repeated word leaves ids at and beyond the size of the vocabulary.
  void fill(EngineState& engine, int words) {
    const bool repeats = once_in(4);
    for (int line = 0; line != words; ++line) {
      engine.fVocab[word(repeats ? below(line + 1) : line)] = line;
      if (!once_in(4)) {
        engine.fIdf[line] = one_of({0.0, 1.0, 1.5, 1.5, 3.7, -0.5});
      }
    }
    wordsense_model& model = engine.fModel;
    model.dim = 1 + below(40);
    model.lambda = one_of({0.0, 0.5, 20.0});
    model.missing_weight = one_of({0.01, 0.5, 1.0});
    const double scale = one_of({1.0, 0.1, 0.1, 1e160});  // the last one overflows
    model.word_factors =
        Eigen::MatrixXd::NullaryExpr(model.dim, words, [&] { return scale * (below(13) - 6); });
    engine.fModelGram =
        model.missing_weight * (model.word_factors * model.word_factors.transpose());
    // Now and then the shapes do not agree.
    model.word_factors.conservativeResize(model.dim + once_in(12), once_in(12) ? words / 2 : words);
    engine.fModelGram.conservativeResize(model.dim, model.dim - once_in(12));
    model.dim = once_in(12) ? -1 : model.dim;
  }

  Rules rules(int words) {
    Rules rules;
    int rule_id = -2;
    for (int count = below(40); count > 0; --count) {
      const Lines fresh = {sentence(words), sentence(words)};
      rules.emplace(rule_id, rules.empty() || !once_in(5) ? fresh : rules.rbegin()->second);
      rule_id += 1 + below(3);
    }
    return rules;
  }

 private:
  std::mt19937 random_;
};

// What a class does that shows its engine to no one.
void switch_rules(VelmoraPrivate& engine, RandomInput& random) {
  std::set<int> on = {random.below(80), random.below(80)};
  engine.xUpdateActiveRules(on);
  std::set<int> off = {random.below(40), random.below(40)};
  engine.xUpdateDeactiveRules(off);
  if (random.once_in(2)) {
    engine.xActiveAllRules();
  }
}

// What no engine function does: the next match has to notice.
void write_by_hand(EngineState& engine, RandomInput& random) {
  Vectors& vectors = engine.fRuleVectors;
  if (random.once_in(2) && !vectors.empty()) {
    std::vector<double>& row = vectors[random.index(vectors)];
    if (random.once_in(2) || row.empty()) {
      row = vectors[random.index(vectors)];
    } else {
      row[random.index(row)] = random.one_of({0.0, -3.0, 1e9, 1e200, NAN});
    }
  }
  if (random.once_in(2)) {
    engine.fRuleRows[random.below(40)] = random.below(static_cast<int>(vectors.size()) + 1);
  }
  if (random.once_in(2) && engine.fActive_rules.size() > 2) {
    engine.fActive_rules.erase(engine.fActive_rules.begin());
    engine.fActive_rules.insert(random.below(80));
  }
  if (random.once_in(2)) {
    engine.fModel.lambda += 0.25;
  } else if (engine.fModelGram.size() != 0) {
    engine.fModelGram.diagonal()[0] += 0.25;
  }
}

TEST(Chain, GivesWhatTheEngineGives) {
  const TemporaryFolder folder;
  int many_groups = 0, no_numbers = 0, outside = 0, near_ties = 0;
  for (unsigned seed = 0; seed != 400; ++seed) {
    SCOPED_TRACE(seed);
    RandomInput random(seed);
    VelmoraPrivate engine;
    const bool is_owned = random.once_in(2);
    if (is_owned) {
      engine.fRuleIndex.trust_tables();
    }
    engine.fLanguage = kLanguage;
    engine.fModelDir = folder.path() + "/";
    engine.fMaxResults = random.once_in(2) ? 20 : random.below(4);
    const int words = 1 + random.below(30);
    random.fill(engine, words);

    LogCapture log;
    Rules rules = random.rules(words);
    ASSERT_TRUE(engine.xLoadDialogVectors(rules));
    const auto engine_lines = log.lines();
    log.records.clear();
    std::map<int, int> rows;
    const Vectors vectors = chain_compilation(rules, engine, rows);
    EXPECT_EQ(engine_lines, log.lines());
    EXPECT_EQ(engine.fRuleRows, rows);
    ASSERT_EQ(engine.fRuleVectors.size(), vectors.size());
    for (std::size_t row = 0; row != vectors.size(); ++row) {
      EXPECT_TRUE(are_close(engine.fRuleVectors[row], vectors[row]));
    }

    engine.xActiveAllRules();
    engine.fActive_rules.insert({-9, random.below(100), 900});  // most without a row
    if (random.once_in(8)) {
      engine.fRuleRows[random.below(20)] = random.once_in(2) ? -1 : 77;
    }
    for (int query = 0; query != 4; ++query) {
      const std::string sentence = random.sentence(words);
      rows = engine.fRuleRows;
      Matches matches, expected;
      try {
        expected = chain_matches(sentence, engine, rows);
        EXPECT_EQ(engine.xMatchInput(sentence, matches), 1);
      } catch (const std::out_of_range&) {
        ++outside;
        EXPECT_THROW(engine.xMatchInput(sentence, matches), std::out_of_range);
      }
      EXPECT_EQ(engine.fRuleRows, rows);
      if (has_near_ties(matches) || has_near_ties(expected)) {
        ++near_ties;
        continue;
      }
      ASSERT_EQ(matches.size(), expected.size());
      for (std::size_t i = 0; i != matches.size(); ++i) {
        EXPECT_TRUE(is_close(matches[i].first, expected[i].first));
        EXPECT_EQ(matches[i].second, expected[i].second);
        no_numbers += std::isnan(matches[i].first);
      }
      many_groups += matches.size() == 21;
      is_owned ? switch_rules(engine, random) : write_by_hand(engine, random);
    }
  }
  // The rare cases did come.
  EXPECT_GT(many_groups, 10);
  EXPECT_GT(no_numbers, 10);
  EXPECT_GT(outside, 10);
  EXPECT_LT(near_ties, 16);
}

}  // namespace
