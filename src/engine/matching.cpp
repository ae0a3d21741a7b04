#include "matching.hpp"

#include <algorithm>

#include "../latent/fold-in.hpp"
#include "../support/log-site.hpp"
#include "../text/stem-set.hpp"

namespace VX::Dialog::detail {

namespace {

bool can_match(const EngineState& engine) {
  return !engine.fVocab.empty() && engine.fModel.dim != 0 && !engine.fActive_rules.empty() &&
         engine.fStemmer != nullptr;
}

void log_refusal(const EngineState& engine, const Reporting& reporting) {
  if (reporting.refusal_counts_active) {
    VELMORA_LOG(reporting.log, zu::log::Level::error, "xMatchInput")
        << "fVocab.size() " << engine.fVocab.size() << "fModel.dim " << engine.fModel.dim
        << "fActive_rules.size() " << engine.fActive_rules.size();
  } else {
    VELMORA_LOG(reporting.log, zu::log::Level::error, "xMatchInput")
        << "fVocab.size() " << engine.fVocab.size() << "fModel.dim " << engine.fModel.dim;
  }
}

// Hosts append match after match to one list, so room grows geometrically.
void reserve_more(MatchList& matches, std::size_t count) {
  const std::size_t needed = matches.size() + count;
  if (needed > matches.capacity()) {
    matches.reserve(std::max(needed, 2 * matches.capacity()));
  }
}

}  // namespace

void activate_all_rules(EngineState& engine) {
  for (const auto& [rule_id, stems] : engine.fRuleWords) {
    engine.fActive_rules.insert(engine.fActive_rules.end(), rule_id);
  }
  engine.fRuleIndex.rules_changed();
}

int match_sentence(EngineState& engine, const Reporting& reporting, const std::string& sentence,
                   std::optional<double> threshold, MatchList& matches) {
  if (!can_match(engine)) {
    log_refusal(engine, reporting);
    return -1;
  }
  VectorTable queries;
  fold_in({{0, stem_set(*engine.fStemmer, sentence)}}, latent_space(engine), queries);
  // One entry more than the field says: that cap is part of the contract.
  const std::size_t limit = static_cast<std::size_t>(std::max(engine.fMaxResults, 0)) + 1;
  ScoreGroups best = engine.fRuleIndex.best_scores(engine.fRuleVectors, queries.front(),
                                                   engine.fActive_rules, engine.fRuleRows, limit);
  reserve_more(matches, best.size());  // all or nothing is appended
  for (auto group = best.rbegin(); group != best.rend(); ++group) {
    // A NaN reaches no threshold.
    if (!threshold || group->first >= *threshold) {
      matches.emplace_back(group->first, std::move(group->second));
    }
  }
  return 1;
}

}  // namespace VX::Dialog::detail
