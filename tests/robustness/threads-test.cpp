// Engines in several threads at once, and inference of several threads on one model. Made to run
// under the thread sanitizer.
#include <atomic>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include <velmora/app-model.hpp>
#include <velmora/inference.hpp>
#include <velmora/matcher.hpp>
#include <velmora/velmora.hpp>

#include "kit/fixtures.hpp"
#include "kit/small-model.hpp"

namespace {

using namespace VX::Dialog;
using namespace test;

void in_threads(int count, const std::function<void(int)>& work) {
  std::vector<std::jthread> threads;
  for (int thread = 0; thread != count; ++thread) {
    threads.emplace_back(work, thread);
  }
}

// All that a host does with an engine; what the engine answered.
Matches serve(const TemporaryFolder& folder, const Rules& rules) {
  std::string base = folder.path(), language = "enu", ignored;
  Velmora cold, warm;
  Matches matches;
  for (Velmora* engine : {&cold, &warm}) {
    EXPECT_TRUE(engine->setModel(base, language));
    EXPECT_TRUE(engine == &cold ? engine->loadDialogVectors(ignored, rules)
                                : engine->loadDialogVectorsFromFile("newindex", rules, "", true));
    engine->activeAllRules(ignored);
    engine->updateDeactiveRules({0, 1}, ignored);
    EXPECT_EQ(engine->matchInput("It's caf\u00E9 time: walk up!", matches, ignored), 1);
  }
  EXPECT_TRUE(warm.loadDialogVectorsFromFile("index", rules, "", false));
  std::map<std::string, Lines> applications = {{"a", {"walk on"}}, {"b", {"don't stop"}}};
  EXPECT_TRUE(AppModel().setModel(base, language, applications));
  return matches;
}

TEST(Threads, EnginesWorkAtTheSameTime) {
  std::atomic<int> records = 0;
  zu::log::setConsole(false);
  const int counter = zu::log::addHandler([&](const zu::log::Record&) { ++records; });
  const TemporaryFolder folders[2];
  const Rules rules = many_rules(folders[0], "enu");
  many_rules(folders[1], "enu");
  const Matches expected = serve(folders[1], rules);
  in_threads(2, [&](int thread) {
    for (int round = 0; round != 10; ++round) {
      EXPECT_EQ(serve(folders[thread], rules), expected);
    }
  });
  zu::log::removeHandler(counter);
  EXPECT_GT(records, 0);
}

TEST(Threads, InferencesShareAModel) {
  wordsense_model model;
  model.dim = 20;
  model.lambda = 0.5;
  model.word_factors = Eigen::MatrixXd::Random(20, 50);
  Eigen::MatrixXd gram = Eigen::MatrixXd::Identity(20, 20);
  Eigen::SparseMatrix<double> sentences = Eigen::MatrixXd::Random(50, 9).sparseView(1.0, 0.7);
  Eigen::MatrixXd latent[4];
  in_threads(4, [&](int thread) {
    Eigen::SparseMatrix<double> data = sentences;
    wordsense_corpus corpus;
    initialize_wordsense_corpus(corpus, data);
    wordsense_inference(corpus, model, latent[thread], gram);
    delete_wordsense_corpus(corpus);
  });
  for (const Eigen::MatrixXd& other : latent) {
    EXPECT_EQ(other, latent[0]);
  }
}

TEST(Threads, ShareAMatcher) {
  const velmora::Matcher matcher(small_model(), {{1, {"go up", "walk"}}, {2, {"stop", "go to"}}});
  const velmora::ActiveRules active = matcher.activate({2});
  const double expected = matcher.match("walk to stop").best()->score;
  in_threads(4, [&](int) {
    for (int round = 0; round != 50; ++round) {
      EXPECT_EQ(matcher.match("walk to stop").best()->score, expected);
      EXPECT_EQ(matcher.match("walk", {1, 0.0, &active}).margin,
                std::numeric_limits<double>::infinity());
      EXPECT_EQ(matcher.explain("walk to stop", 2).unknown, Lines());
    }
    EXPECT_EQ(matcher.match({"go", "stop", "up"}, {}, 2).size(), 3U);
  });
}

}  // namespace
