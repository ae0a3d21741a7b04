// A host of today: rules with several sentences, a threshold, asking back, rules that come and go.
#include <cstdio>
#include <string>
#include <vector>

#include <velmora/error.hpp>
#include <velmora/matcher.hpp>

namespace {

// `velmora test` finds values for a dialogue of your own.
constexpr double kGoodEnough = 0.2;
constexpr double kClearlyAhead = 0.05;

const std::vector<velmora::Rule> kRules = {
    {1, {"Switch on the light.", "Turn on the lamp.", "It is too dark in here."}},
    {2, {"Play some music.", "Put on a song that I like.", "I want to listen to the radio."}},
    {3, {"What will the weather be like?", "Is it going to rain tomorrow?"}},
    {4, {"Cook dinner.", "Prepare a warm meal for us.", "I am hungry."}},
};

void ask(const velmora::Matcher& matcher, const char* sentence,
         const velmora::ActiveRules* active = nullptr) {
  velmora::MatchOptions options;
  options.threshold = kGoodEnough;
  options.active = active;
  const velmora::Answer answer = matcher.match(sentence, options);
  std::printf("\n\"%s\"\n", sentence);
  for (const std::string& word : answer.unknown) {
    std::printf("  unknown word: %s\n", word.c_str());
  }
  const velmora::Match* best = answer.best();
  if (best == nullptr) {
    std::printf("  nothing is good enough: better ask back\n");
    return;
  }
  const velmora::Rule& rule = *matcher.find(best->id);
  std::printf("  %s rule %d: %s\n", answer.margin < kClearlyAhead ? "perhaps" : "surely", best->id,
              rule.sentences[best->sentence].c_str());
}

}  // namespace

int main() {
  try {
    const velmora::Matcher matcher(velmora::Model::installed("enu"), kRules);
    ask(matcher, "Please sing me a song.");
    ask(matcher, "Will there be rain?");
    ask(matcher, "Qwertyuiop!");

    // With the topic of the talk, rules go and come: one set a topic, made once.
    const velmora::ActiveRules kitchen = matcher.activate({4});
    std::printf("\nin the kitchen:");
    ask(matcher, "I would like to eat supper, with some music.", &kitchen);
  } catch (const velmora::Error& error) {
    std::printf("%s\n", error.what());
    return 1;
  }
  return 0;
}
