// Finds the topic of a sentence with TopicModel: one constructor call, then questions.
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <velmora/topic-model.hpp>
#include <zu/log.hpp>

int main() {
  zu::log::setLevel(zu::log::Level::warning);  // the log tells every file that is read
  const std::map<int, std::vector<std::string>> topics = {
      {1, {"food and drink", "cooking a meal in the kitchen", "bread, meat, fruit and wine"}},
      {2, {"sport and games", "players of a team win the match with the ball"}},
      {3, {"health", "a doctor treats a disease of the patient with medicine"}},
      {4, {"travel", "a journey by train, ship or car to a foreign city"}},
  };
  // The language must have an installed model: the constructor does not report one that is missing.
  VX::Dialog::TopicModel model("enu", topics);

  for (const char* sentence :
       {"Which restaurant has good soup?", "Who won the football game?",
        "My throat hurts and I cough.", "When does the bus to the airport leave?"}) {
    std::vector<std::pair<double, std::vector<int>>> matches;
    std::string unused;
    if (model.matchInput(sentence, matches, unused) != 1) {
      std::printf("there is no model for enu\n");
      return 1;
    }
    const auto& [score, topic_ids] = matches.front();
    std::printf("%-42s %6.3f  %s\n", sentence, score, topics.at(topic_ids.front()).front().c_str());
  }
  return 0;
}
