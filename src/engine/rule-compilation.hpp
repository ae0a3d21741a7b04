// Compilation of rules into latent vectors.
//
// Used by both private engines. Not installed. Tested by tests/engine/matching-test.cpp.
#pragma once

#include "engine-state.hpp"

namespace VX::Dialog::detail {

/// Compiles rules and saves them as "newindex". The sentences of `rules` are replaced by the rules'
/// known stems. Throws what write_ls throws.
void compile_rules(EngineState& engine, RuleTable& rules);

}  // namespace VX::Dialog::detail
