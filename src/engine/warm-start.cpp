#include "warm-start.hpp"

#include <iostream>
#include <velmora/frequencies.hpp>
#include <velmora/preprocess.hpp>
#include <velmora/query-weighting.hpp>
#include <velmora/snapshot.hpp>

#include "../snapshot/snapshot-reader.hpp"
#include "../support/checked-lookup.hpp"
#include "../support/log-site.hpp"
#include "model-selection.hpp"
#include "rule-compilation.hpp"
#include "rule-reduction.hpp"

namespace VX::Dialog::detail {

using zu::log::Level;

namespace {

// Rules with more stems than this are dumped: they blur.
constexpr std::size_t kManyStems = 100;

void log_counts(const EngineKind& kind, const char* function, const RuleTable& rule_stems,
                const ClassifiedRules& rules, const char* fate_of_unknown) {
  VELMORA_LOG(kind.log, Level::info, function) << "Total new rules IDs: " << rule_stems.size();
  VELMORA_LOG(kind.log, Level::info, function) << "known rules: " << rules.known_sets.size();
  VELMORA_LOG(kind.log, Level::info, function)
      << "unique unknown rules: " << rules.unknown_sets.size();
  VELMORA_LOG(kind.log, Level::info, function) << fate_of_unknown << rules.first_unknown.size();
}

void dump_large_rules(const RuleTable& rule_stems) {
  for (const auto& [rule_id, stems] : rule_stems) {
    if (stems.size() > kManyStems) {
      std::cout << stems.size() << "\n" << vector2string(stems) << "\n\n";
    }
  }
}

void dump_snapshot(const Snapshot& words2ls) {
  for (const auto& [stems, vector] : words2ls) {
    std::cout << vector2string(stems) << "\n" << vector2string(vector) << "\n\n";
  }
}

void dump_new_vectors(const RuleTable& first_unknown,
                      const std::vector<std::vector<double>>& new_Sentences_ls) {
  auto vector = new_Sentences_ls.begin();
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
std::vector<std::vector<double>> merge_vectors(const RuleTable& rule_stems,
                                               const std::map<StemSet, std::set<int>>& unknown_sets,
                                               const Snapshot& words2ls,
                                               std::vector<std::vector<double>> new_Sentences_ls) {
  std::vector<std::vector<double>> merged_ls;
  std::set<StemSet> added;
  auto next_new = new_Sentences_ls.begin();
  for (const auto& [rule_id, stems] : rule_stems) {
    if (!added.insert(stems).second) {
      continue;
    }
    if (unknown_sets.contains(stems)) {
      merged_ls.push_back(*next_new++);
    } else {
      merged_ls.push_back(checked_lookup(words2ls, stems));
    }
  }
  return merged_ls;
}

}  // namespace

bool load_snapshot_index(EngineState& engine, const EngineKind& kind, const std::string& path,
                         std::vector<std::vector<double>>& vectors,
                         const std::map<int, std::vector<std::string>>& rules, Stemmer& stemmer) {
  Snapshot words2ls = read_snapshot(path);
  const RuleTable rule_stems = reduce_rules(rules, engine.fVocab, stemmer);
  engine.fRuleFreqs = getRulesFrequencies(rule_stems);
  const ClassifiedRules classified = classify_rules(rule_stems, words2ls);
  log_counts(kind, "load_snapshot_index", rule_stems, classified, "ignored rule: ");
  number_rows(engine, classified.first_known);
  if (zu::log::isVisible(query_log, Level::info)) {
    // No inference follows, but words without an idf are reported as in a compilation.
    std::map<int, std::vector<int>> word_ids;
    word_indices(classified.first_known, engine.fVocab, word_ids);
    std::map<int, std::map<int, double>> unused;
    tfidf(word_ids, engine.fIdf, unused);
  }
  engine.fRuleWords = classified.first_known;
  std::vector<std::vector<double>> merged_ls;
  merged_ls.reserve(classified.first_known.size());
  for (const auto& [rule_id, stems] : classified.first_known) {
    merged_ls.push_back(std::move(words2ls[stems]));
  }
  vectors = std::move(merged_ls);
  if (kind.dumps) {
    std::cout << "words2ls  " << words2ls.size() << "\n"
              << "merged_ls  " << vectors.size() << "\n";
  }
  VELMORA_LOG(kind.log, Level::info, "load_snapshot_index") << "Updated index";
  return true;
}

bool load_snapshot_merge(EngineState& engine, const EngineKind& kind, const std::string& path,
                         std::vector<std::vector<double>>& vectors,
                         std::map<int, std::vector<std::string>>& rules, Stemmer& stemmer) {
  const RuleTable rule_stems = reduce_rules(rules, engine.fVocab, stemmer);
  rules.clear();  // the sentences are no longer needed, and there may be many
  if (kind.dumps) {
    dump_large_rules(rule_stems);
  }
  engine.fRuleFreqs = getRulesFrequencies(rule_stems);
  engine.fRuleWords = rule_stems;
  const Snapshot words2ls = read_snapshot(path);
  if (kind.dumps) {
    dump_snapshot(words2ls);
  }
  ClassifiedRules classified = classify_rules(rule_stems, words2ls);
  log_counts(kind, "load_snapshot_ls2", rule_stems, classified, "rules to compile: ");
  classified.known_sets.clear();
  number_rows(engine, rule_stems);
  std::vector<std::vector<double>> new_Sentences_ls;
  fold_in(classified.first_unknown, latent_space(engine), new_Sentences_ls);
  VELMORA_LOG(kind.log, Level::info, "load_snapshot_ls2") << "Calculated vectors";
  if (kind.dumps) {
    dump_new_vectors(classified.first_unknown, new_Sentences_ls);
  }
  const std::size_t new_count = new_Sentences_ls.size();
  vectors =
      merge_vectors(rule_stems, classified.unknown_sets, words2ls, std::move(new_Sentences_ls));
  if (kind.dumps) {
    std::cout << "new_Sentences_ls  " << new_count << "\n"
              << "words2ls  " << words2ls.size() << "\n"
              << "merged_ls  " << vectors.size() << "\n";
  }
  VELMORA_LOG(kind.log, Level::info, "load_snapshot_ls2") << "Updated index";
  return true;
}

bool load_from_file(EngineState& engine, const EngineKind& kind, const std::string& name,
                    std::map<int, std::vector<std::string>> rules, bool compile_new_rules) {
  renew_stemmer(engine);  // first of all, also when there is no file
  const std::string path = engine.fModelDir + name;
  if (!exists(path)) {
    return false;  // silently: whether to compile instead is the host's decision
  }
  VELMORA_LOG(kind.log, Level::info, "xLoadDialogVectorsFromFile") << " loading index: " << path;
  if (!compile_new_rules) {
    (void)load_snapshot_index(engine, kind, path, engine.fRuleVectors, rules, *engine.fStemmer);
    return true;
  }
  (void)load_snapshot_merge(engine, kind, path, engine.fRuleVectors, rules, *engine.fStemmer);
  VELMORA_LOG(kind.log, Level::info, "xLoadDialogVectorsFromFile") << " saving index ";
  write_ls(engine.fRuleVectors, engine.fRuleWords, engine.fRuleRows, engine.fModelDir + "index");
  VELMORA_LOG(kind.log, Level::info, "xLoadDialogVectorsFromFile") << " saved index ";
  return true;
}

}  // namespace VX::Dialog::detail
