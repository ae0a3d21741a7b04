#include "rule-compilation.hpp"

#include <velmora/frequencies.hpp>
#include <velmora/preprocess.hpp>
#include <velmora/snapshot.hpp>

#include "../latent/fold-in.hpp"
#include "../support/model-files.hpp"
#include "../text/stem-set.hpp"

namespace VX::Dialog::detail {

void compile_rules(EngineState& engine, RuleTable& rules) {
  engine.fRuleIndex.rules_changed();  // also when an exception ends this half-way
  renew_stemmer(engine);
  for (auto& [rule_id, sentences] : rules) {
    sentences = known_stem_set(*engine.fStemmer, sentences, engine.fVocab);
  }
  engine.fRuleFreqs = getRulesFrequencies(rules);
  // Neither rows nor vectors of an earlier compilation are cleared: a host that compiles from
  // scratch takes a fresh engine.
  RuleTable unique;
  preprocess(engine.fRuleFreqs, rules, 0, engine.fRuleRows, unique);
  fold_in(unique, latent_space(engine), engine.fRuleVectors);
  engine.fRuleIndex.renew(engine.fRuleVectors);
  engine.fRuleWords = rules;
  write_ls(engine.fRuleVectors, engine.fRuleWords, engine.fRuleRows,
           engine.fModelDir + kCompiledSnapshot);
}

}  // namespace VX::Dialog::detail
