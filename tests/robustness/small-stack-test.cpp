// Every step of a host on a thread with a small stack, at any dimension.
#include <pthread.h>

#include <functional>

#include <gtest/gtest.h>

#include <velmora/matrix-files.hpp>

#include "engine/velmora-private.hpp"
#include "kit/fixtures.hpp"

namespace {

using namespace VX::Dialog;
using namespace test;

constexpr std::size_t kSmallStack = 128 * 1024;

void run_on_small_stack(std::function<void()> work) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, kSmallStack), 0);
  pthread_t thread;
  const auto run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST(SmallStack, ServesLoadingCompilationAndMatching) {
  const LogCapture log;
  for (const int dim : {50, 100, 150, 300}) {
    SCOPED_TRACE(dim);
    const TemporaryFolder folder;
    const int words = 2 * dim;
    std::string dictionary, long_rule;
    for (int word = 0; word != words; ++word) {
      dictionary += "w" + std::to_string(word) + "\n";
      long_rule += "w" + std::to_string(word) + " ";  // more words than half of dim: an inverse
    }
    write_model(folder);
    folder.write("tst/model/dictionary", dictionary);
    folder.write("tst/model/model", std::to_string(dim) + "\n20\n0.01\n");
    Eigen::MatrixXd factors = Eigen::MatrixXd::Random(dim, words);
    write_mat_data(folder.path("tst/model/model.conf"), factors);
    run_on_small_stack([&] {
      VelmoraPrivate engine;
      std::string base = folder.path(), language = kLanguage;
      EXPECT_TRUE(engine.xSetModel(base, language));
      Rules rules = {{1, {"w1 w2"}}, {2, {long_rule}}};
      engine.xLoadDialogVectors(rules);
      engine.xActiveAllRules();
      Matches matches;
      EXPECT_EQ(engine.xMatchInput("w1", matches), 1);
      EXPECT_EQ(engine.xMatchInput(long_rule, matches), 1);
      EXPECT_EQ(matches.size(), 4U);
      EXPECT_TRUE(
          engine.xLoadDialogVectorsFromFile("newindex", {{1, {"w1 w2"}}, {2, {"w3"}}}, true));
    });
  }
}

}  // namespace
