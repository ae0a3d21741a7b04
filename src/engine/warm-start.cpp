#include "warm-start.hpp"

#include <iostream>

#include <velmora/frequencies.hpp>
#include <velmora/preprocess.hpp>
#include <velmora/snapshot.hpp>
#include <velmora/tfidf.hpp>

#include "../latent/fold-in.hpp"
#include "../snapshot/snapshot-reader.hpp"
#include "../support/checked-lookup.hpp"
#include "../support/log-site.hpp"
#include "../support/model-files.hpp"
#include "../support/path-exists.hpp"
#include "rule-reduction.hpp"

namespace VX::Dialog::detail {

using zu::log::Level;

namespace {

// Rules with more stems than this are dumped: they blur.
constexpr std::size_t kManyStems = 100;

void log_counts(const Reporting& reporting, const char* function, const RuleTable& rule_stems,
                const ClassifiedRules& rules, const char* fate_of_unknown) {
  VELMORA_LOG(reporting.log, Level::info, function) << "Total new rules IDs: " << rule_stems.size();
  VELMORA_LOG(reporting.log, Level::info, function) << "known rules: " << rules.known_sets.size();
  VELMORA_LOG(reporting.log, Level::info, function)
      << "unique unknown rules: " << rules.unknown_sets.size();
  VELMORA_LOG(reporting.log, Level::info, function)
      << fate_of_unknown << rules.first_unknown.size();
}

void dump_large_rules(const RuleTable& rule_stems) {
  for (const auto& [rule_id, stems] : rule_stems) {
    if (stems.size() > kManyStems) {
      std::cout << stems.size() << "\n" << vector2string(stems) << "\n\n";
    }
  }
}

void dump_snapshot(const Snapshot& snapshot) {
  for (const auto& [stems, vector] : snapshot) {
    std::cout << vector2string(stems) << "\n" << vector2string(vector) << "\n\n";
  }
}

void dump_new_vectors(const RuleTable& first_unknown, const VectorTable& new_vectors) {
  auto vector = new_vectors.begin();
  for (const auto& [rule_id, stems] : first_unknown) {
    std::cout << rule_id << "\n"
              << vector2string(stems) << "\n"
              << vector2string(*vector++) << "\n\n";
  }
}

// Numbers the rows: each distinct stem set gets the next one, by ascending rule id. Rows of ids
// that are not among the rules stay as an earlier load left them.
void number_rows(EngineState& engine, const RuleTable& rule_stems) {
  RuleTable unused;
  preprocess(engine.fRuleFreqs, rule_stems, 0, engine.fRuleRows, unused);
}

// Stored and new vectors in the order in which number_rows meets their stem sets.
VectorTable merge_vectors(const RuleTable& rule_stems,
                          const std::map<StemSet, std::set<int>>& unknown_sets,
                          const Snapshot& snapshot, VectorTable new_vectors) {
  VectorTable merged;
  std::set<StemSet> added;
  auto next_new = new_vectors.begin();
  for (const auto& [rule_id, stems] : rule_stems) {
    if (!added.insert(stems).second) {
      continue;
    }
    if (unknown_sets.contains(stems)) {
      merged.push_back(*next_new++);
    } else {
      merged.push_back(checked_lookup(snapshot, stems));
    }
  }
  return merged;
}

}  // namespace

void load_snapshot_index(EngineState& engine, const Reporting& reporting, const std::string& path,
                         VectorTable& vectors, const RuleTable& rules, Stemmer& stemmer) {
  Snapshot snapshot = read_snapshot(path);
  const RuleTable rule_stems = reduce_rules(rules, engine.fVocab, stemmer);
  engine.fRuleFreqs = getRulesFrequencies(rule_stems);
  const ClassifiedRules classified = classify_rules(rule_stems, snapshot);
  log_counts(reporting, "load_snapshot_index", rule_stems, classified, "ignored rule: ");
  number_rows(engine, classified.first_known);
  if (zu::log::isVisible(query_log, Level::info)) {
    // No inference follows, but words without an idf are reported as in a compilation.
    WordIdTable word_ids;
    word_indices(classified.first_known, engine.fVocab, word_ids);
    WeightTable unused;
    tfidf(word_ids, engine.fIdf, unused);
  }
  engine.fRuleWords = classified.first_known;
  VectorTable merged;
  merged.reserve(classified.first_known.size());
  for (const auto& [rule_id, stems] : classified.first_known) {
    merged.push_back(std::move(snapshot[stems]));
  }
  vectors = std::move(merged);
  if (reporting.dumps) {
    std::cout << "words2ls  " << snapshot.size() << "\n"
              << "merged_ls  " << vectors.size() << "\n";
  }
  VELMORA_LOG(reporting.log, Level::info, "load_snapshot_index") << "Updated index";
}

void load_snapshot_merge(EngineState& engine, const Reporting& reporting, const std::string& path,
                         VectorTable& vectors, RuleTable& rules, Stemmer& stemmer) {
  const RuleTable rule_stems = reduce_rules(rules, engine.fVocab, stemmer);
  rules.clear();  // the sentences are no longer needed, and there may be many
  if (reporting.dumps) {
    dump_large_rules(rule_stems);
  }
  engine.fRuleFreqs = getRulesFrequencies(rule_stems);
  engine.fRuleWords = rule_stems;
  const Snapshot snapshot = read_snapshot(path);
  if (reporting.dumps) {
    dump_snapshot(snapshot);
  }
  ClassifiedRules classified = classify_rules(rule_stems, snapshot);
  log_counts(reporting, "load_snapshot_ls2", rule_stems, classified, "rules to compile: ");
  classified.known_sets.clear();
  number_rows(engine, rule_stems);
  VectorTable new_vectors;
  fold_in(classified.first_unknown, latent_space(engine), new_vectors);
  VELMORA_LOG(reporting.log, Level::info, "load_snapshot_ls2") << "Calculated vectors";
  if (reporting.dumps) {
    dump_new_vectors(classified.first_unknown, new_vectors);
  }
  const std::size_t new_count = new_vectors.size();
  vectors = merge_vectors(rule_stems, classified.unknown_sets, snapshot, std::move(new_vectors));
  if (reporting.dumps) {
    std::cout << "new_Sentences_ls  " << new_count << "\n"
              << "words2ls  " << snapshot.size() << "\n"
              << "merged_ls  " << vectors.size() << "\n";
  }
  VELMORA_LOG(reporting.log, Level::info, "load_snapshot_ls2") << "Updated index";
}

bool load_from_file(EngineState& engine, const Reporting& reporting, const std::string& name,
                    RuleTable rules, bool compile_new_rules) {
  engine.fRuleIndex.rules_changed();  // also when an exception ends this half-way
  renew_stemmer(engine);              // first of all, also when there is no file
  const std::string path = engine.fModelDir + name;
  if (!path_exists(path)) {
    return false;  // silently: whether to compile instead is the host's decision
  }
  VELMORA_LOG(reporting.log, Level::info, "xLoadDialogVectorsFromFile")
      << " loading index: " << path;
  if (!compile_new_rules) {
    load_snapshot_index(engine, reporting, path, engine.fRuleVectors, rules, *engine.fStemmer);
    engine.fRuleIndex.renew(engine.fRuleVectors);
    return true;
  }
  load_snapshot_merge(engine, reporting, path, engine.fRuleVectors, rules, *engine.fStemmer);
  engine.fRuleIndex.renew(engine.fRuleVectors);
  VELMORA_LOG(reporting.log, Level::info, "xLoadDialogVectorsFromFile") << " saving index ";
  write_ls(engine.fRuleVectors, engine.fRuleWords, engine.fRuleRows,
           engine.fModelDir + kMergedSnapshot);
  VELMORA_LOG(reporting.log, Level::info, "xLoadDialogVectorsFromFile") << " saved index ";
  return true;
}

}  // namespace VX::Dialog::detail
