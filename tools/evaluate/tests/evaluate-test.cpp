// velmora-evaluate on a model of four words, with figures worked by hand.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "../measures.hpp"
#include "kit/program-run.hpp"

namespace {

using ::testing::HasSubstr;

constexpr const char* kModel = "--language enu --model enu/model ";

nlohmann::json evaluate(const Workplace& place, const std::string& arguments) {
  const ProgramResult result = place.run(VELMORA_EVALUATE, kModel + arguments + " --json", "");
  EXPECT_EQ(result.status, 0) << result.err;
  return nlohmann::json::parse(result.out, nullptr, false);
}

struct ThresholdCase {
  const char* what;
  std::vector<double> right;
  std::vector<double> other;
  BestThreshold best;
};

const ThresholdCase kThresholds[] = {
    {"apart", {0.9, 0.6}, {0.5, 0.1}, {0.6, 1.0, 0.0}},
    {"a right one is not worth two others", {0.9, 0.3}, {0.5, 0.4}, {0.9, 0.5, 0.0}},
    {"of equals the lower", {0.9, 0.3}, {0.5}, {0.3, 1.0, 1.0}},
    {"nothing to keep out", {0.9, 0.3}, {}, {0.3, 1.0, 0.0}},
};

TEST(Measures, BestThresholdSeparates) {
  for (const ThresholdCase& c : kThresholds) {
    SCOPED_TRACE(c.what);
    const BestThreshold best = best_threshold(c.right, c.other);
    EXPECT_EQ(best.score, c.best.score);
    EXPECT_EQ(best.keeps, c.best.keeps);
    EXPECT_EQ(best.lets_through, c.best.lets_through);
  }
}

TEST(Evaluate, RanksIntents) {
  const Workplace place;
  place.write("train.tsv", "bright\tSwitch on the light.\nloud\tPlay music.\nodd\tUnknown.\n");
  // The last two are lost: a song is not bright, and a sentence without a known word is a tie.
  place.write("test.tsv", "bright\ta lamp\nloud\tmusic\nbright\ta song\nloud\txyzzy\n");
  place.write("outside.txt", "Hello.\n");
  const nlohmann::json report =
      evaluate(place, "--intents train.tsv test.tsv --out-of-scope outside.txt --baseline tf-idf");
  const nlohmann::json& intents = report["intents"];
  EXPECT_EQ(intents["rules"], 2);
  EXPECT_EQ(intents["unknown_rules"], 1);
  EXPECT_EQ(intents["latent"]["top1"], 0.5);
  EXPECT_EQ(intents["latent"]["top3"], 1.0);
  EXPECT_EQ(intents["latent"]["mean_reciprocal_rank"], 0.75);
  EXPECT_EQ(intents["latent"]["area_under_roc"], 3.5 / 4);
  // Without the latent space a lamp has nothing of a light: three ties.
  EXPECT_EQ(intents["tf-idf"]["top1"], 0.25);
  EXPECT_EQ(intents["tf-idf"]["mean_reciprocal_rank"], 2.5 / 4);
  EXPECT_EQ(intents["latent"]["confusions"].size(), 2u);
  EXPECT_EQ(intents["latent"]["confusions"][0]["got"], "loud");
}

TEST(Evaluate, ComparesTheMatcherAndListsWhatFails) {
  const Workplace place;
  place.write("train.tsv", "bright\tSwitch on the light.\nloud\tPlay music.\n");
  // A lamp shares no word with its rule, a song neither with the wrong one that it is said to mean.
  place.write("test.tsv", "bright\tthe light\nbright\ta lamp\nbright\ta song\nloud\tmusic\n");
  const nlohmann::json intents =
      evaluate(place, "--intents train.tsv test.tsv --matcher --baseline tf-idf")["intents"];
  EXPECT_EQ(intents["low_overlap"], 2);
  for (const char* contender : {"latent", "matcher"}) {
    SCOPED_TRACE(contender);
    EXPECT_EQ(intents[contender]["top1"], 0.75);
    EXPECT_EQ(intents[contender]["top1_low_overlap"], 0.5);
    ASSERT_EQ(intents[contender]["failures"].size(), 1u);
    EXPECT_EQ(intents[contender]["failures"][0]["sentence"], "a song");
    EXPECT_EQ(intents[contender]["failures"][0]["rank"], 2);
    EXPECT_EQ(intents[contender]["failures"][0]["low_overlap"], true);
  }
  EXPECT_EQ(intents["tf-idf"]["top1_low_overlap"], 0.0);
  // Right answers score 1; the lamp of tf-idf and the song are wrong.
  EXPECT_EQ(intents["latent"]["threshold_keeps"], 1.0);
  EXPECT_EQ(intents["latent"]["threshold_lets_through"], 1.0);
  EXPECT_EQ(intents["tf-idf"]["threshold_keeps"], 1.0);
}

TEST(Evaluate, ComparesPairs) {
  const Workplace place;
  // Similarities 1, 0 and 1/sqrt(2); the repeated word counts once.
  place.write("pairs.tsv", "5\tlamp\tthe light\n0\tlamp\tsong\n2.5\tlamp lamp song\tlight\n");
  const nlohmann::json pairs = evaluate(place, "--pairs pairs.tsv")["pairs"];
  EXPECT_NEAR(pairs["latent"]["pearson"].get<double>(), 0.972575, 1e-6);
  EXPECT_DOUBLE_EQ(pairs["latent"]["spearman"].get<double>(), 1.0);
  EXPECT_THAT(place.run(VELMORA_EVALUATE, std::string(kModel) + "--pairs pairs.tsv", "").out,
              HasSubstr("Pearson                            0.973\n"));
}

const std::tuple<const char*, int, const char*> kFailures[] = {
    {"", 2, "one of --intents and --pairs"},
    {"--intents good.tsv", 2, "--intents"},
    {"--intents good.tsv good.tsv --rules 0", 2, "a number above 0"},
    {"--intents good.tsv bad.tsv", 1, "bad.tsv:1: no tab between label and"},
    {"--pairs pairs.tsv", 1, "pairs.tsv:1: score 'x' is not a number"},
    {"--intents unknown.tsv good.tsv", 1, "knows no word of any training"},
    {"--intents good.tsv good.tsv --bsaeline tf-idf", 2, "did you mean '--baseline'?"},
};

TEST(Evaluate, TellsWhatIsWrong) {
  const Workplace place;
  place.write("good.tsv", "a\tlamp\n");
  place.write("bad.tsv", "lamp\n");
  place.write("pairs.tsv", "x\tlamp\tlight\n");
  place.write("unknown.tsv", "a\txyzzy\n");
  for (const auto& [arguments, status, err] : kFailures) {
    const ProgramResult result = place.run(VELMORA_EVALUATE, std::string(kModel) + arguments, "");
    EXPECT_EQ(result.status, status) << arguments;
    EXPECT_THAT(result.err, HasSubstr(err));
    EXPECT_EQ(result.out, "");
  }
}

const std::pair<const char*, const char*> kUnusableModels[] = {
    {"--language enu --model absent ", "absent"},
    {"--language enu --model enu ", "enu/model: is not a regular file"},
    {"--language enu --model cut ", "cut/model.conf:1: the file is too short"},
    {"--language eng --model enu/model ", "'eng'"},
};

TEST(Evaluate, AnExplicitModelIsTheOneOrAnError) {
  const Workplace place;
  place.write("pairs.tsv", "5\tlamp\tlight\n");
  std::filesystem::copy(place.path("enu/model"), place.path("cut"));
  place.write("cut/model.conf", "4 2\n1 0\n");
  for (const auto& [model, err] : kUnusableModels) {
    SCOPED_TRACE(model);
    const ProgramResult result =
        place.run(VELMORA_EVALUATE, std::string(model) + "--pairs pairs.tsv", "");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr(err));
    EXPECT_EQ(result.out, "");
  }
}

TEST(Evaluate, FailsWhenNobodyGetsTheReport) {
  const Workplace place;
  place.write("pairs.tsv", "5\tlamp\tlight\n");
  const std::string report =
      "{ sleep 0.1; exec " VELMORA_EVALUATE " " + std::string(kModel) + "--pairs pairs.tsv; } ";
  for (const char* lost : {">/dev/full", ">&-", "| false"}) {
    const ProgramResult result =
        place.run("/bin/bash", "-c 'set -o pipefail; " + report + lost + "'", "");
    EXPECT_EQ(result.status, 1) << lost;
    EXPECT_THAT(result.err, HasSubstr("cannot write to standard output")) << lost;
  }
}

}  // namespace
