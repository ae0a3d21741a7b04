// Matching of one sentence against the active rules.
//
// Used by both private engines. Not installed. Tested by tests/engine/matching-test.cpp and
// tests/engine/chain-test.cpp.
#pragma once

#include <optional>
#include <string>

#include "engine-state.hpp"

namespace VX::Dialog::detail {

/// Adds every rule of the last compilation or load to the active set, also rules without a row.
void activate_all_rules(EngineState& engine);

/// Appends the best fMaxResults + 1 score groups; with a threshold only those that reach it. 1, or
/// -1 with `matches` untouched when there is nothing to match with.
int match_sentence(EngineState& engine, const Reporting& reporting, const std::string& sentence,
                   std::optional<double> threshold, MatchList& matches);

}  // namespace VX::Dialog::detail
