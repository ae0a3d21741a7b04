#include "known-words.hpp"

std::vector<std::string> known_stems(const velmora::Model& model, const std::string& sentence) {
  std::vector<std::string> stems = model.stems(sentence);
  std::erase_if(stems, [&](const std::string& stem) { return !model.knows(stem); });
  return stems;
}
