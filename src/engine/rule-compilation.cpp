#include "rule-compilation.hpp"

#include <velmora/frequencies.hpp>
#include <velmora/preprocess.hpp>
#include <velmora/snapshot.hpp>

#include "../text/stem-set.hpp"

namespace VX::Dialog::detail {

LatentSpace latent_space(const EngineState& engine) {
  return {engine.fVocab, engine.fIdf, engine.fModel, engine.fModelGram};
}

void renew_stemmer(EngineState& engine) {
  engine.fStemmer.reset();
  engine.fStemmer = std::make_unique<Stemmer>(engine.fLanguage);
}

bool compile_rules(EngineState& engine, std::map<int, std::vector<std::string>>& rules) {
  renew_stemmer(engine);
  for (auto& [rule_id, sentences] : rules) {
    sentences = known_stem_set(*engine.fStemmer, sentences, engine.fVocab);
  }
  engine.fRuleFreqs = getRulesFrequencies(rules);
  // Neither rows nor vectors of an earlier compilation are cleared: a host that compiles from
  // scratch takes a fresh engine.
  std::map<int, std::vector<std::string>> unique;
  preprocess(engine.fRuleFreqs, rules, 0, engine.fRuleRows, unique);
  fold_in(unique, latent_space(engine), engine.fRuleVectors);
  engine.fRuleWords = rules;
  write_ls(engine.fRuleVectors, engine.fRuleWords, engine.fRuleRows, engine.fModelDir + "newindex");
  return true;
}

}  // namespace VX::Dialog::detail
