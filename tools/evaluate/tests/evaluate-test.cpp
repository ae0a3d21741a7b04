// velmora-evaluate on a model of four words, with figures worked by hand.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "program-run.hpp"

namespace {

using ::testing::HasSubstr;

constexpr const char* kModel = "--language enu --model . ";

nlohmann::json evaluate(const Workplace& place, const std::string& arguments) {
  const ProgramResult result = place.run(VELMORA_EVALUATE, kModel + arguments + " --json", "");
  EXPECT_EQ(result.status, 0) << result.err;
  return nlohmann::json::parse(result.out, nullptr, false);
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

TEST(Evaluate, PrintsATable) {
  const Workplace place;
  place.write("train.tsv", "bright\tlight\nloud\tmusic\nodd\tUnknown.\n");
  place.write("test.tsv", "bright\ta song\nbright\tmusic\nodd\tlamp\nloud\tsong\n");
  place.write("outside.tsv", "none\tmusic\nnone\tHello.\n");
  const ProgramResult result = place.run(
      VELMORA_EVALUATE,
      std::string(kModel) + "--intents train.tsv test.tsv --out-of-scope outside.tsv", "");
  for (const char* part :
       {"intents: 3 labels, 2 rules, 4 test sentences\n",
        "left out: 1 rules without a known word\n", "                                  latent\n",
        "top-1                              0.250\n", "top-3                              0.750\n",
        "area under ROC, out of scope       0.750\n",
        "     2  bright -> loud\n     1  odd -> bright\n"}) {
    EXPECT_THAT(result.out, HasSubstr(part));
  }
}

TEST(Evaluate, RanksBeyondOneMatch) {
  // Thirty words fan out from the first one, each the only word of its label.
  constexpr int kWords = 30;
  const Workplace place;
  std::ostringstream dictionary;
  std::ostringstream factors;
  std::ostringstream training;
  factors << kWords << " 2\n";
  for (int word = 0; word != kWords; ++word) {
    dictionary << "w" << word << "\n";
    factors << "1 " << 0.1 * word << "\n";
    training << "label" << word << "\tw" << word << "\nlabel" << word << "\tthe w" << word << "\n";
  }
  place.write("enu/model/dictionary", dictionary.str());
  place.write("enu/model/model.conf", factors.str());
  place.write("train.tsv", training.str());
  place.write("test.tsv", "label24\tw0\n");
  for (const char* rules : {"joined", "single", "2"}) {
    SCOPED_TRACE(rules);
    const nlohmann::json intents =
        evaluate(place, std::string("--intents train.tsv test.tsv --rules ") + rules)["intents"];
    EXPECT_EQ(intents["latent"]["mean_reciprocal_rank"], 1.0 / 25);
    EXPECT_EQ(intents["rules"], std::string(rules) == "single" ? 2 * kWords : kWords);
  }
}

TEST(Evaluate, ComparesPairs) {
  const Workplace place;
  // Similarities 1, 0 and 1/sqrt(2); the repeated word counts once.
  place.write("pairs.tsv", "5\tlamp\tthe light\n0\tlamp\tsong\n2.5\tlamp lamp song\tlight\n");
  const nlohmann::json pairs = evaluate(place, "--pairs pairs.tsv")["pairs"];
  EXPECT_NEAR(pairs["latent"]["pearson"].get<double>(), 0.972575, 1e-6);
  EXPECT_DOUBLE_EQ(pairs["latent"]["spearman"].get<double>(), 1.0);
  const ProgramResult table =
      place.run(VELMORA_EVALUATE, std::string(kModel) + "--pairs pairs.tsv", "");
  EXPECT_THAT(table.out, HasSubstr("Pearson                            0.973\n"));
}

struct FailureCase {
  const char* what;
  const char* arguments;
  int status;
  const char* err;
};

const FailureCase kFailures[] = {
    {"nothing to do", "", 2, "one of --intents and --pairs"},
    {"one file of two", "--intents good.tsv", 2, "--intents"},
    {"rules of no sentence", "--intents good.tsv good.tsv --rules 0", 2, "a number above 0"},
    {"no such baseline", "--pairs pairs.tsv --baseline luck", 2, "tf-idf"},
    {"bad test line", "--intents good.tsv bad.tsv", 1, "bad.tsv:1: no tab between label and"},
    {"bad score", "--pairs pairs.tsv", 1, "pairs.tsv:1: score 'x' is no number"},
    {"nothing known", "--intents unknown.tsv good.tsv", 1, "knows no word of any training"},
};

TEST(Evaluate, TellsWhatIsWrong) {
  const Workplace place;
  place.write("good.tsv", "a\tlamp\n");
  place.write("bad.tsv", "lamp\n");
  place.write("pairs.tsv", "x\tlamp\tlight\n");
  place.write("unknown.tsv", "a\txyzzy\n");
  for (const FailureCase& c : kFailures) {
    SCOPED_TRACE(c.what);
    const ProgramResult result = place.run(VELMORA_EVALUATE, std::string(kModel) + c.arguments, "");
    EXPECT_EQ(result.status, c.status);
    EXPECT_THAT(result.err, HasSubstr(c.err));
    EXPECT_EQ(result.out, "");
  }
}

}  // namespace
