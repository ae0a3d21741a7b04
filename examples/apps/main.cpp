// Chooses the application that a user asks for, with AppModel: names in, names out, and a threshold
// below which no application is meant.
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <velmora/app-model.hpp>
#include <zu/log.hpp>

int main() {
  zu::log::setLevel(zu::log::Level::warning);  // the log tells every file that is read
  std::map<std::string, std::vector<std::string>> applications = {
      {"alarm-clock", {"wake me up in the morning", "set the alarm to seven o'clock"}},
      {"camera", {"take a picture", "make a photograph of the family"}},
      {"music-player", {"play music", "listen to a song of my favourite singer"}},
      {"recipes", {"how to cook a dish", "what can I make for dinner"}},
  };
  VX::Dialog::AppModel model;
  // "models" is a base directory of your own; without one there the installed models are taken.
  if (!model.setModel("models", "enu", applications)) {
    std::printf("there is no model for enu\n");
    return 1;
  }

  constexpr double kThreshold = 0.3;
  for (const char* sentence : {"I want to hear some songs.", "Photograph the dog.",
                               "Which dish can we cook tonight?", "The bank is closed."}) {
    std::vector<std::pair<double, std::vector<std::string>>> matches;
    model.matchInput(sentence, matches, kThreshold);
    std::printf("%-36s", sentence);
    if (matches.empty()) {
      std::printf(" none of them");
    }
    for (const auto& [score, names] : matches) {
      for (const std::string& name : names) {
        std::printf(" %s (%.3f)", name.c_str(), score);
      }
    }
    std::printf("\n");
  }
  return 0;
}
