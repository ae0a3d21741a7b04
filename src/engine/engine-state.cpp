#include "engine-state.hpp"

#include "../latent/fold-in.hpp"

namespace VX::Dialog::detail {

LatentSpace latent_space(const EngineState& engine) {
  return {engine.fVocab, engine.fIdf, engine.fModel, engine.fModelGram};
}

void renew_stemmer(EngineState& engine) {
  engine.fStemmer.reset();
  engine.fStemmer = std::make_unique<Stemmer>(engine.fLanguage);
}

}  // namespace VX::Dialog::detail
