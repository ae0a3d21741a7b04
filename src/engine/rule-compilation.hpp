// Compilation of rules into latent vectors. Not installed. Tested by
// tests/engine/matching-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "../latent/fold-in.hpp"
#include "engine-state.hpp"

namespace VX::Dialog::detail {

/// The tables of an engine that folding reads.
LatentSpace latent_space(const EngineState& engine);

/// Gives the engine a fresh stemmer for its language.
void renew_stemmer(EngineState& engine);

/// Compiles rules and saves them as "newindex". The sentences of `rules` are replaced by the rules'
/// known stems. Always true.
bool compile_rules(EngineState& engine, std::map<int, std::vector<std::string>>& rules);

}  // namespace VX::Dialog::detail
