// A second start that does not compile what the first one compiled.
//
// Compilation leaves the vectors of the rules in the model directory, as "newindex". A later start
// recognises rules by their words, whatever their numbers, and takes their vectors from that file.
// The two ways to treat rules that are new meanwhile: leave them out, or compile them.
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <velmora/velmora.hpp>
#include <zu/log.hpp>

namespace {

using Rules = std::map<int, std::vector<std::string>>;

bool select_model(VX::Dialog::Velmora& matcher) {
  std::string base = "models";  // not there: the installed models
  std::string language = "enu";
  return matcher.setModel(base, language);
}

void show_best(VX::Dialog::Velmora& matcher, const std::string& sentence) {
  std::vector<std::pair<double, std::vector<int>>> matches;
  std::string unused;
  if (matcher.matchInput(sentence, matches, unused) != 1) {
    std::printf("  no rule is loaded\n");
    return;
  }
  std::printf("  \"%s\": rule %d, score %.3f\n", sentence.c_str(), matches.front().second.front(),
              matches.front().first);
}

/// A start from the snapshot; `compile_new` says what becomes of rules that it does not hold.
void warm_start(const Rules& rules, bool compile_new) {
  VX::Dialog::Velmora matcher;
  std::string unused;
  if (!select_model(matcher) ||
      !matcher.loadDialogVectorsFromFile("newindex", rules, unused, compile_new)) {
    std::printf("  there is no snapshot: compile first\n");
    return;
  }
  matcher.activeAllRules(unused);
  show_best(matcher, "Please play a song.");
  show_best(matcher, "Can you wash the plates?");
}

}  // namespace

int main() {
  zu::log::setLevel(zu::log::Level::warning);  // the log tells every file that is read
  const Rules rules = {{1, {"Play some music.", "Put on a song."}},
                       {2, {"Open the window.", "Let in some fresh air."}}};

  std::printf("cold start, two rules are compiled:\n");
  VX::Dialog::Velmora matcher;
  std::string unused;
  if (!select_model(matcher)) {
    std::printf("there is no model for enu\n");
    return 1;
  }
  matcher.loadDialogVectors(unused, rules);
  matcher.activeAllRules(unused);
  show_best(matcher, "Please play a song.");

  // The dialogue has grown since, and its rules have other numbers.
  const Rules later_rules = {
      {10, rules.at(1)}, {20, rules.at(2)}, {30, {"Wash the dishes.", "Clean the plates."}}};

  std::printf("warm start, new rules left out:\n");
  warm_start(later_rules, false);
  // This one also saves everything as "index", from which the next start can go on.
  std::printf("warm start, new rules compiled:\n");
  warm_start(later_rules, true);
  return 0;
}
