// The whole life of a matcher: select a model, compile rules, activate them, ask.
//
// A host decides itself what is a good enough match; here a cosine of 0.4 or more.
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <velmora/velmora.hpp>
#include <zu/log.hpp>

namespace {

constexpr double kGoodEnough = 0.4;

using Rules = std::map<int, std::vector<std::string>>;

const Rules kRules = {
    {1, {"Switch on the light.", "It is too dark in here."}},
    {2, {"Play some music.", "Put on a song that I like."}},
    {3, {"What will the weather be like?", "Is it going to rain tomorrow?"}},
    {4, {"Cook dinner.", "Prepare a warm meal for us."}},
};

void ask(VX::Dialog::Velmora& matcher, const std::string& sentence) {
  std::vector<std::pair<double, std::vector<int>>> matches;
  std::string unused;
  std::printf("\n\"%s\"\n", sentence.c_str());
  if (matcher.matchInput(sentence, matches, unused) != 1) {
    std::printf("  matching is not possible\n");
    return;
  }
  // One entry for each distinct score, best first; rules with equal scores share an entry.
  for (const auto& [score, rule_ids] : matches) {
    for (const int rule_id : rule_ids) {
      std::printf("  %6.3f  rule %d  %s\n", score, rule_id, kRules.at(rule_id).front().c_str());
    }
  }
  if (matches.front().first < kGoodEnough) {
    std::printf("  nothing is good enough: better ask back\n");
  }
}

}  // namespace

int main() {
  zu::log::setLevel(zu::log::Level::warning);  // the log tells every file that is read
  VX::Dialog::Velmora matcher;
  std::string unused;
  // A base directory of your own models; without one there the installed models are taken.
  std::string base = "models";
  std::string language = "enu";
  if (!matcher.setModel(base, language)) {
    std::printf("there is no model for %s\n", language.c_str());
    return 1;
  }
  matcher.loadDialogVectors(unused, kRules);
  matcher.activeAllRules(unused);

  ask(matcher, "Please sing me a song.");
  ask(matcher, "Will there be rain?");
  ask(matcher, "How many kilometres is it to the moon?");

  // Rules come and go with the topic of the talk: without rule 2 another one is the best.
  matcher.updateDeactiveRules({2}, unused);
  std::printf("\nwithout rule 2:");
  ask(matcher, "Please sing me a song.");
  return 0;
}
