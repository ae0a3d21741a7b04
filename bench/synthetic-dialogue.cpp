#include "synthetic-dialogue.hpp"

#include <stdlib.h>

#include <filesystem>

#include "engine/rule-compilation.hpp"
#include "latent/fold-in.hpp"

namespace bench {

SyntheticDialogue::SyntheticDialogue(int vocabulary_size, int dim, unsigned seed)
    : state_(seed), vocabulary_size_(vocabulary_size) {
  std::string folder = (std::filesystem::temp_directory_path() / "velmora-bench-XXXXXX").string();
  engine.fModelDir = std::string(mkdtemp(folder.data())) + "/";
  engine.fModelFile = engine.fModelDir + "model";
  engine.fIdfFile = engine.fModelDir + "idf";
  engine.fDictionaryFile = engine.fModelDir + "dictionary";
  engine.fLanguage = "tst";  // words come through the stemmer as they are
  for (int word = 0; word != vocabulary_size; ++word) {
    engine.fVocab["w" + std::to_string(word)] = word;
    engine.fIdf[word] = 1.0 + static_cast<double>(random() % 700) / 100.0;
  }
  engine.fModel.dim = dim;
  engine.fModel.lambda = 3.0;
  engine.fModel.missing_weight = 0.01;
  engine.fModel.word_factors.resize(dim, vocabulary_size);
  for (double& factor : engine.fModel.word_factors.reshaped()) {
    factor = static_cast<double>(random() % 19) - 9.0;
  }
  engine.fModelGram = VX::Dialog::detail::compute_word_gram(engine.fModel);
  VX::Dialog::detail::renew_stemmer(engine);
}

SyntheticDialogue::~SyntheticDialogue() {
  std::filesystem::remove_all(engine.fModelDir);
}

unsigned SyntheticDialogue::random() {
  state_ = state_ * 1664525u + 1013904223u;
  return state_ >> 8;
}

std::string SyntheticDialogue::make_sentence() {
  std::string sentence;
  for (int word = 0; word != kWordsInSentence; ++word) {
    sentence += "w" + std::to_string(random() % static_cast<unsigned>(vocabulary_size_)) + " ";
  }
  return sentence;
}

Rules SyntheticDialogue::make_rules(int count, int first_id) {
  Rules rules;
  for (int rule = 0; rule != count; ++rule) {
    rules[first_id + rule] = {make_sentence()};
  }
  return rules;
}

void SyntheticDialogue::fill_rules(int count) {
  const auto dim = static_cast<std::size_t>(engine.fModel.dim);
  for (int rule = 0; rule != count; ++rule) {
    std::vector<double> vector(dim);
    for (double& value : vector) {
      value = static_cast<double>(random() % 2001) / 1000.0 - 1.0;
    }
    engine.fRuleVectors.push_back(std::move(vector));
  }
  for (int rule = 0; rule != count; ++rule) {
    engine.fRuleRows[rule] = rule;
  }
  for (int rule = 0; rule != count; ++rule) {
    engine.fActive_rules.insert(rule);
  }
  engine.fRuleIndex.renew(engine.fRuleVectors);
  engine.fRuleIndex.trust_tables();  // as Velmora does
}

}  // namespace bench
