#include "engine-state.hpp"

#include "../latent/fold-in.hpp"

namespace VX::Dialog::detail {

LatentSpace latent_space(EngineState& engine) {
  if (!engine.fGramInverse.is_of(engine.fModelGram, engine.fModel.lambda)) {
    engine.fGramInverse = GramInverse(engine.fModelGram, engine.fModel.lambda);
  }
  return {engine.fVocab, engine.fIdf, engine.fModel, engine.fModelGram, engine.fGramInverse};
}

void renew_stemmer(EngineState& engine) {
  engine.fStemmer.reset();
  engine.fStemmer = std::make_unique<Stemmer>(engine.fLanguage);
}

}  // namespace VX::Dialog::detail
