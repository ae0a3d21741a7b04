#include "rule-reduction.hpp"

namespace VX::Dialog::detail {

RuleTable reduce_rules(const RuleTable& rules, const Vocabulary& vocabulary, Stemmer& stemmer) {
  RuleTable rule_stems;
  for (const auto& [rule_id, sentences] : rules) {
    StemSet stems = known_stem_set(stemmer, sentences, vocabulary);
    if (!stems.empty()) {
      rule_stems.emplace_hint(rule_stems.end(), rule_id, std::move(stems));
    }
  }
  return rule_stems;
}

ClassifiedRules classify_rules(const RuleTable& rule_stems, const Snapshot& snapshot) {
  ClassifiedRules rules;
  for (const auto& [rule_id, stems] : rule_stems) {
    const bool known = snapshot.contains(stems);
    std::set<int>& rule_ids = known ? rules.known_sets[stems] : rules.unknown_sets[stems];
    if (rule_ids.empty()) {
      (known ? rules.first_known : rules.first_unknown)[rule_id] = stems;
    }
    rule_ids.insert(rule_id);
  }
  return rules;
}

}  // namespace VX::Dialog::detail
