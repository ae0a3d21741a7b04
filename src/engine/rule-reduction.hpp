// The stages that both warm starts share: rules to stem sets, and stem sets against a snapshot.
//
// Not installed. Tested by tests/engine/warm-start-test.cpp.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "../text/stem-set.hpp"

namespace VX::Dialog::detail {

using RuleTable = std::map<int, std::vector<std::string>>;
using Snapshot = std::map<StemSet, std::vector<double>>;

/// Rule id to stem set; a rule without a known stem has no entry.
RuleTable reduce_rules(const RuleTable& rules, const std::map<std::string, int>& vocabulary,
                       Stemmer& stemmer);

/// Rules sorted by whether the snapshot has their stem set.
struct ClassifiedRules {
  std::map<StemSet, std::set<int>> known_sets;
  std::map<StemSet, std::set<int>> unknown_sets;
  RuleTable first_known;    ///< lowest rule id of each known set to the set
  RuleTable first_unknown;  ///< the same for the unknown sets
};

ClassifiedRules classify_rules(const RuleTable& rule_stems, const Snapshot& words2ls);

}  // namespace VX::Dialog::detail
