#include "stem-set.hpp"

#include <algorithm>

#include <fennel/stemmer.hpp>

#include "../support/number-text.hpp"

namespace VX::Dialog::detail {

namespace {

void trim(std::string& stem) {
  while (!stem.empty() && is_white_space(stem.back())) {
    stem.pop_back();
  }
  const auto first = std::find_if_not(stem.begin(), stem.end(), is_white_space);
  stem.erase(stem.begin(), first);
}

void append_stems(Stemmer& stemmer, const std::string& sentence, StemSet& stems) {
  std::vector<std::string> raw;
  stemmer.stem_sentence(sentence, raw);
  for (std::string& stem : raw) {
    trim(stem);
    if (!stem.empty()) {
      stems.push_back(std::move(stem));
    }
  }
}

void sort_and_make_unique(StemSet& stems) {
  std::sort(stems.begin(), stems.end());
  stems.erase(std::unique(stems.begin(), stems.end()), stems.end());
}

}  // namespace

StemSet stem_set(Stemmer& stemmer, const std::string& sentence) {
  StemSet stems;
  append_stems(stemmer, sentence, stems);
  sort_and_make_unique(stems);
  return stems;
}

StemSet known_stem_set(Stemmer& stemmer, const std::vector<std::string>& sentences,
                       const Vocabulary& vocabulary) {
  StemSet stems;
  for (const std::string& sentence : sentences) {
    append_stems(stemmer, sentence, stems);
  }
  std::erase_if(stems, [&](const std::string& stem) { return !vocabulary.contains(stem); });
  sort_and_make_unique(stems);
  return stems;
}

}  // namespace VX::Dialog::detail
