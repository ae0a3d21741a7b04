// Scores against the formula that stands in velmora/matcher.hpp, and what a host sees of a matcher.
#include <cmath>

#include <Eigen/LU>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/velmora.hpp>

#include "kit/random-sentences.hpp"
#include "kit/small-model.hpp"
#include "matcher/scoring.hpp"

namespace {

using namespace test;
using velmora::Answer;
using velmora::Match;
using velmora::Matcher;
using velmora::MatchOptions;
using velmora::Model;
using velmora::Rule;
using velmora::ScoreOptions;
namespace detail = velmora::detail;

const ScoreOptions kLatentOnly = {1.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0};

Eigen::MatrixXd dense(const std::vector<detail::SparseVector>& vectors, std::size_t size) {
  Eigen::MatrixXd matrix = Eigen::MatrixXd::Zero(static_cast<Eigen::Index>(size),
                                                 static_cast<Eigen::Index>(vectors.size()));
  for (std::size_t j = 0; j != vectors.size(); ++j) {
    for (const detail::Feature& feature : vectors[j]) {
      matrix(feature.id, static_cast<Eigen::Index>(j)) = static_cast<double>(feature.value);
    }
  }
  return matrix;
}

// The formula as it stands, with dense matrices and inverses.
class DirectScorer {
 public:
  explicit DirectScorer(const Matcher& matcher)
      : data_(matcher.data()),
        F_(data_.sentences.latent),
        W_(dense(data_.sentences.words, data_.views.word_count())),
        C_(dense(data_.sentences.characters, data_.views.piece_count())),
        M_(Eigen::MatrixXd::Zero(F_.cols(), static_cast<Eigen::Index>(data_.rules.size()))) {
    for (Eigen::Index j = 0; j != F_.cols(); ++j) {
      M_(j, static_cast<Eigen::Index>(data_.rule_of[static_cast<std::size_t>(j)])) = 1.0;
    }
    const auto identity = [](Eigen::Index size) { return Eigen::MatrixXd::Identity(size, size); };
    R_ = (F_ * F_.transpose() + 0.5 * identity(F_.rows())).inverse() * F_ * M_;
    J_ = (0.4 * F_.transpose() * F_ + 0.3 * W_.transpose() * W_ + 0.3 * C_.transpose() * C_ +
          0.3 * identity(F_.cols()))
             .inverse() *
         M_;
  }

  // The score of every rule, in the order of the rules.
  Eigen::VectorXd scores(const std::string& sentence) const {
    const ScoreOptions& options = data_.options;
    const detail::Query query = detail::make_query(data_, sentence);
    const Eigen::VectorXd x = dense({query.words}, data_.views.word_count());
    const Eigen::VectorXd y = dense({query.characters}, data_.views.piece_count());
    const Eigen::VectorXd f = F_.transpose() * query.latent;
    const Eigen::VectorXd w = W_.transpose() * x;
    const Eigen::VectorXd c = C_.transpose() * y;
    const double m = static_cast<double>(F_.cols()) / static_cast<double>(M_.cols());
    const double kernel = data_.uses_kernel() ? options.kernel * std::log10(m) : 0.0;
    double most_shared = 0.0;
    for (Eigen::Index r = 0; r != M_.cols(); ++r) {
      most_shared = std::max(most_shared, nearest(w, r));
    }
    const double g =
        options.shared_words > 0.0
            ? std::min(1.0, std::pow(query.unknown_share + most_shared / options.shared_words, 2))
            : 1.0;
    Eigen::VectorXd sums = options.ridge * R_.transpose() * query.latent +
                           kernel * J_.transpose() * (0.4 * f + 0.3 * w + 0.3 * c);
    for (Eigen::Index r = 0; r != M_.cols(); ++r) {
      sums(r) += options.nearest * nearest(f, r) + options.centre * centre(F_, f, r) +
                 g / m *
                     (options.words * (nearest(w, r) + centre(W_, w, r)) +
                      options.characters * (nearest(c, r) + centre(C_, c, r)));
    }
    return sums / (options.nearest + options.centre + options.ridge + kernel +
                   2.0 / m * (options.words + options.characters));
  }

 private:
  double nearest(const Eigen::VectorXd& dots, Eigen::Index rule) const {
    double highest = -2.0;
    for (Eigen::Index j = 0; j != dots.size(); ++j) {
      highest = M_(j, rule) == 1.0 ? std::max(highest, dots(j)) : highest;
    }
    return highest;
  }
  double centre(const Eigen::MatrixXd& view, const Eigen::VectorXd& dots, Eigen::Index rule) const {
    const double length = (view * M_.col(rule)).norm();
    return length > 0.0 ? dots.dot(M_.col(rule)) / length : 0.0;
  }

  const detail::MatcherData& data_;
  Eigen::MatrixXd F_, W_, C_, M_, R_, J_;
};

void expect_same_answers(const std::vector<Match>& first, const std::vector<Match>& second) {
  ASSERT_EQ(first.size(), second.size());
  for (std::size_t i = 0; i != first.size(); ++i) {
    EXPECT_EQ(first[i].id, second[i].id);
    EXPECT_EQ(first[i].score, second[i].score) << "to the last bit";
    EXPECT_EQ(first[i].sentence, second[i].sentence);
  }
}

class Scores : public testing::TestWithParam<unsigned> {};

TEST_P(Scores, AreThoseOfTheFormula) {
  const Model model = Model::installed("enu");
  RandomSentences random(model, GetParam());
  ScoreOptions options;
  options.kernel_sentences = GetParam() % 2 == 0 ? 0 : 1000;
  options.shared_words = GetParam() % 3 == 0 ? 0.0 : 0.7;
  const Matcher matcher(model, random.rules(30, 6), options);
  EXPECT_EQ(matcher.uses_kernel(), GetParam() % 2 != 0);
  const DirectScorer direct(matcher);
  MatchOptions all;
  all.top = 100;
  MatchOptions few;
  few.top = 3;
  for (int round = 0; round != 5; ++round) {
    const std::string sentence = random.sentence();
    SCOPED_TRACE(sentence);
    const Eigen::VectorXd expected = direct.scores(sentence);
    const Answer answer = matcher.match(sentence, all);
    ASSERT_EQ(answer.matches.size(), 30U);
    for (const Match& match : answer.matches) {
      EXPECT_NEAR(match.score, expected(30 - match.id), 1e-6) << match.id;
    }
    // A scan for few scores most rules by their bounds alone.
    expect_same_answers(matcher.match(sentence, few).matches,
                        {answer.matches.begin(), answer.matches.begin() + 3});
  }
}

TEST_P(Scores, OfActiveRulesAreThoseOfTheFullSet) {
  const Model model = Model::installed("enu");
  RandomSentences random(model, GetParam());
  ScoreOptions options;
  options.shared_words = 0.0;  // g is 1, whatever the other rules share
  const Matcher matcher(model, random.rules(30, 6), options);
  const velmora::ActiveRules active = matcher.activate({7, 3, 29, 7});
  EXPECT_EQ(active.size(), 3U);
  MatchOptions some;
  some.active = &active;
  MatchOptions all;
  all.top = 30;
  for (int round = 0; round != 10; ++round) {
    const std::string sentence = random.sentence();
    std::vector<Match> expected = matcher.match(sentence, all).matches;
    std::erase_if(expected, [](const Match& m) { return m.id != 3 && m.id != 7 && m.id != 29; });
    expect_same_answers(matcher.match(sentence, some).matches, expected);
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Scores, testing::Range(1U, 7U));

TEST(Matcher, OneKnownSentenceScoresAsThePublishedEngine) {
  const Model model = Model::installed("enu");
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder.path("enu"));
  std::filesystem::copy(model.directory(), folder.path("enu/model"));
  RandomSentences random(model, 1);
  std::vector<Rule> rules = random.rules(20, 1);
  const Matcher matcher(model, rules, kLatentOnly);

  VX::Dialog::Velmora engine;
  std::string base = folder.path(), language = "enu", unused;
  ASSERT_TRUE(engine.setModel(base, language));
  std::map<int, Lines> published;
  for (const Rule& rule : rules) {
    published[rule.id] = rule.sentences;
  }
  engine.loadDialogVectors(unused, published);
  engine.activeAllRules(unused);
  for (int round = 0; round != 20; ++round) {
    const std::string sentence = random.sentence();
    Matches matches;
    ASSERT_EQ(engine.matchInput(sentence, matches, unused), 1);
    EXPECT_NEAR(matcher.match(sentence).best()->score, matches.front().first, 1e-12) << sentence;
  }
}

std::vector<Rule> small_rules() {
  return {{4, {"go up", "walk"}}, {2, {"stop"}}, {9, {"stop"}}};
}

TEST(Matcher, RanksByScoreThenId) {
  const Matcher matcher(small_model(), small_rules());
  const Answer answer = matcher.match("stop");
  ASSERT_EQ(answer.matches.size(), 3U);
  EXPECT_EQ(answer.best()->id, 2);
  EXPECT_EQ(answer.matches[1].id, 9);
  EXPECT_EQ(answer.margin, 0.0);
  EXPECT_EQ(matcher.match("walk on").best()->id, 4);
  EXPECT_EQ(matcher.match("walk on").best()->sentence, 1U);
}

TEST(Matcher, TopAndThresholdLimitTheMatchesAndNotTheMargin) {
  const Matcher matcher(small_model(), small_rules());
  const Answer all = matcher.match("go");
  MatchOptions one;
  one.top = 1;
  EXPECT_EQ(matcher.match("go", one).matches.size(), 1U);
  EXPECT_EQ(matcher.match("go", one).margin, all.margin);
  MatchOptions none;
  none.threshold = all.best()->score + 1e-9;
  EXPECT_EQ(matcher.match("go", none).best(), nullptr);
  EXPECT_EQ(matcher.match("go", none).margin, all.margin);
  none.threshold = all.best()->score;
  EXPECT_EQ(matcher.match("go", none).matches.size(), 1U);
}

TEST(Matcher, TellsWordsThatNobodyKnows) {
  const Matcher matcher(small_model(), {{1, {"go to Blorp"}}, {2, {"stop"}}});
  EXPECT_EQ(matcher.match("walk to Xyzzy, xyzzy!").unknown, Lines{"xyzzi"});
  EXPECT_EQ(matcher.match("blorp").best()->id, 1) << "a word of the rules alone counts";
  EXPECT_EQ(matcher.match("blorpp").best()->id, 1) << "also with a typing error";
  EXPECT_GT(matcher.match("blorpp").margin, 0.0);
}

TEST(Matcher, AnswersEverySentence) {
  const Matcher matcher(small_model(), {{1, {"?!", "\xFF\xFE", "unheard of"}}, {2, {"stop"}}});
  for (const std::string sentence : {"", " \n", "?!", "\xFF", "nothing known", "stop"}) {
    const Answer answer = matcher.match(sentence);
    ASSERT_EQ(answer.matches.size(), 2U) << sentence;
    EXPECT_TRUE(std::isfinite(answer.matches[0].score + answer.matches[1].score)) << sentence;
  }
  const Matcher empty(small_model(), {});
  EXPECT_EQ(empty.match("stop").best(), nullptr);
  const velmora::ActiveRules nobody = matcher.activate({});
  EXPECT_TRUE(matcher.match("stop", {5, -1.0, &nobody}).matches.empty());
}

TEST(Matcher, BatchesAnswerInOrder) {
  const Matcher matcher(small_model(), small_rules());
  std::vector<std::string> sentences;
  for (int i = 0; i != 50; ++i) {
    sentences.push_back(i % 3 == 0 ? "go" : i % 3 == 1 ? "stop" : "walk up");
  }
  for (const unsigned threads : {0U, 1U, 4U}) {
    const std::vector<Answer> answers = matcher.match(sentences, {}, threads);
    ASSERT_EQ(answers.size(), sentences.size());
    for (std::size_t i = 0; i != sentences.size(); ++i) {
      expect_same_answers(answers[i].matches, matcher.match(sentences[i]).matches);
    }
  }
}

TEST(Matcher, SaysWhatIsWrong) {
  const Model model = small_model();
  const Matcher matcher(model, small_rules());
  const Matcher other(model, small_rules());
  const velmora::ActiveRules active = other.activate({2});
  EXPECT_EQ(error_of([&] {
              Matcher(model, {{1, {"go"}}, {1, {"up"}}});
            }),
            "rule id 1 comes twice: expected each once");
  EXPECT_EQ(error_of([&] { Matcher(model, {{1, {}}}); }), "rule 1 has no sentence: expected one");
  EXPECT_EQ(error_of([&] { (void)matcher.activate({2, 3}); }), "rule 3 is not among the rules");
  EXPECT_EQ(error_of([&] {
              (void)matcher.match("go", {5, 0.0, &active});
            }),
            "active rules of another matcher: expected those of this one");
  EXPECT_EQ(error_of([&] {
              (void)matcher.match({"go", "up"}, {5, 0.0, &active}, 2);
            }),
            "active rules of another matcher: expected those of this one");
  EXPECT_EQ(error_of([&] { (void)other.explain("go", 9, &active); }),
            "rule 9 is not among the active rules");
}

TEST(Matcher, TellsHowFarItIs) {
  std::vector<std::size_t> steps;
  const Matcher matcher(small_model(), small_rules(), {}, [&](std::size_t done, std::size_t total) {
    EXPECT_EQ(total, 8U);
    steps.push_back(done);
  });
  EXPECT_EQ(steps, (std::vector<std::size_t>{1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(matcher.find(9)->sentences, Lines{"stop"});
  EXPECT_EQ(matcher.find(8), nullptr);
}

}  // namespace
