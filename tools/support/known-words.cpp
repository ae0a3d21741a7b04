// Which words of a sentence a model knows; see known-words.hpp.
#include "known-words.hpp"

#include <set>

#include <velmora/dictionary.hpp>

KnownWords::KnownWords(const std::string& language, std::string dictionary_path)
    : stemmer_(language), vocabulary_(VX::Dialog::get_word_ids(dictionary_path)) {}

std::vector<std::string> KnownWords::of(const std::string& sentence) {
  std::vector<std::string> stems;
  stemmer_.stem_sentence(sentence, stems);
  std::set<std::string> known;
  for (const std::string& stem : stems) {
    if (vocabulary_.count(stem) != 0) {
      known.insert(stem);
    }
  }
  return {known.begin(), known.end()};
}
