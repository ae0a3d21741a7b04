// Why a rule wins: the score as a sum over pairs of words, and what would make it win by more.
#include <cstdio>
#include <string>

#include <velmora/error.hpp>
#include <velmora/lint.hpp>
#include <velmora/matcher.hpp>

namespace {

constexpr std::size_t kShown = 5;

void explain(const velmora::Matcher& matcher, const std::string& sentence, int rule_id) {
  const velmora::Explanation why = matcher.explain(sentence, rule_id);
  std::printf("\n\"%s\" scores %.3f with rule %d\n", sentence.c_str(), why.score, rule_id);
  double shown = 0.0;
  for (std::size_t i = 0; i != why.pairs.size() && i != kShown; ++i) {
    const velmora::WordPair& pair = why.pairs[i];
    std::printf("  %6.3f  %s - %s\n", pair.total(), pair.query_word.c_str(),
                pair.rule_word.empty() ? "(other rules)" : pair.rule_word.c_str());
    shown += pair.total();
  }
  std::printf("  %6.3f  all other pairs\n", why.score - shown);
}

}  // namespace

int main() {
  try {
    const velmora::Matcher matcher(velmora::Model::installed("enu"),
                                   {{1, {"Switch on the light.", "Turn on the lamp."}},
                                    {2, {"Is it going to rain?", "Tell me the weather."}},
                                    {3, {"Start the Gizmotron.", "Switch the light on."}}});
    explain(matcher, "Do I need an umbrella?", 2);
    explain(matcher, "Do I need an umbrella?", 1);

    std::printf("\nwhat to mend:\n");
    for (const velmora::Finding& finding : velmora::lint(matcher)) {
      std::printf("  rule %d: %s\n", finding.rule, finding.text.c_str());
    }
  } catch (const velmora::Error& error) {
    std::printf("%s\n", error.what());
    return 1;
  }
  return 0;
}
