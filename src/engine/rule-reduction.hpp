// The stages that both warm starts share: rules to stem sets, and stem sets against a snapshot.
//
// Used by the warm start. Not installed. Tested by tests/engine/warm-start-test.cpp.
#pragma once

#include <map>
#include <set>

#include "../snapshot/snapshot-reader.hpp"
#include "../support/tables.hpp"
#include "../text/stem-set.hpp"

namespace VX::Dialog::detail {

/// Rule id to stem set; a rule without a known stem has no entry.
RuleTable reduce_rules(const RuleTable& rules, const Vocabulary& vocabulary, Stemmer& stemmer);

/// Rules sorted by whether the snapshot has their stem set.
struct ClassifiedRules {
  std::map<StemSet, std::set<int>> known_sets;
  std::map<StemSet, std::set<int>> unknown_sets;
  RuleTable first_known;    ///< lowest rule id of each known set to the set
  RuleTable first_unknown;  ///< the same for the unknown sets
};

ClassifiedRules classify_rules(const RuleTable& rule_stems, const Snapshot& snapshot);

}  // namespace VX::Dialog::detail
