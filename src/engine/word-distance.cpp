#include "word-distance.hpp"

#include <iostream>

#include "../latent/fold-in.hpp"
#include "../ranking/cosine.hpp"
#include "../support/log-site.hpp"

namespace VX::Dialog::detail {

double list_similarity(EngineState& engine, std::vector<std::string> first,
                       std::vector<std::string> second) {
  VectorTable vectors;
  fold_in({{0, std::move(first)}, {1, std::move(second)}}, latent_space(engine), vectors);
  return cosine_of(vectors[0], vectors[1]);
}

std::map<double, std::string> specificities(const EngineState& engine, const Reporting& reporting,
                                            const std::string& sentence) {
  std::vector<std::string> stems;
  if (engine.fStemmer) {
    engine.fStemmer->stem_sentence(sentence, stems);
  }
  std::map<double, std::string> stem_of_idf;
  for (const std::string& stem : stems) {
    const auto word = engine.fVocab.find(stem);
    if (word == engine.fVocab.end()) {
      VELMORA_LOG(reporting.log, zu::log::Level::info, "xSpecificities")
          << "Specificities, word not found: " << stem;
      continue;
    }
    const auto idf = engine.fIdf.find(word->second);
    if (idf != engine.fIdf.end()) {
      stem_of_idf[idf->second] = stem;  // of two stems with one idf the later stays
    }
  }
  if (stem_of_idf.empty()) {
    stem_of_idf[1.0] = sentence;
  }
  return stem_of_idf;
}

void load_word_distances(EngineState& engine) {
  const int word_count = static_cast<int>(engine.fVocab.size());
  std::cout << "nb_queries " << word_count << "\n"
            << "fVocab.size() " << word_count << "\n";
  RuleTable words;
  int position = 0;
  for (const auto& [word, word_id] : engine.fVocab) {
    words[position++] = {word};
  }
  VectorTable vectors;
  fold_in(words, latent_space(engine), vectors);

  std::map<int, std::map<int, double>> distances;
  for (int i = 0; i != word_count; ++i) {
    std::map<int, double>& row = distances[i];
    for (int j = 0; j != word_count; ++j) {
      const double similarity =
          cosine_of(vectors[static_cast<std::size_t>(i)], vectors[static_cast<std::size_t>(j)]);
      row.emplace_hint(row.end(), j, similarity);
    }
  }
  // The table is filled by position and printed by word id. With a dictionary that is not in
  // sorted order the values belong to other words than the names beside them; that is how the
  // table is defined.
  for (const auto& [first, first_id] : engine.fVocab) {
    std::cout << "\n" << first << "\n\n";
    for (const auto& [second, second_id] : engine.fVocab) {
      std::cout << "    " << second << " " << distances[first_id][second_id] << "\n";
    }
  }
  engine.fWordDists = std::move(distances);
}

}  // namespace VX::Dialog::detail
