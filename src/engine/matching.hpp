// Matching of one sentence against the active rules. Not installed. Tested by
// tests/engine/matching-test.cpp and tests/engine/chain-test.cpp.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine-state.hpp"

namespace VX::Dialog::detail {

/// Score groups, best first: score and ascending rule ids.
using MatchList = std::vector<std::pair<double, std::vector<int>>>;

/// Adds every rule of the last compilation or load to the active set, also rules without a row.
void activate_all_rules(EngineState& engine);

/// Appends the best fMaxResults + 1 score groups; with a threshold only those that reach it. 1, or
/// -1 with `matches` untouched when there is nothing to match with.
int match_sentence(EngineState& engine, const EngineKind& kind, const std::string& sentence,
                   std::optional<double> threshold, MatchList& matches);

}  // namespace VX::Dialog::detail
