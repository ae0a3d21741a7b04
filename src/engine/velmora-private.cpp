#include "velmora-private.hpp"

#include <velmora/debug.hpp>

#include "../support/log-site.hpp"
#include "../support/tables.hpp"
#include "matching.hpp"
#include "model-selection.hpp"
#include "rule-compilation.hpp"
#include "warm-start.hpp"
#include "word-distance.hpp"

namespace VX::Dialog {

using detail::MatchList;
using detail::RuleTable;
using detail::VectorTable;

namespace {

detail::Reporting reporting() {
  return {detail::command_log, DEBUG, /*refusal_counts_active=*/true};
}

}  // namespace

VelmoraPrivate::VelmoraPrivate() {
  fMaxResults = kMaxResults;
}

VelmoraPrivate::VelmoraPrivate(std::string language) {
  fMaxResults = kMaxResultsOfLanguage;
  fLanguage = std::move(language);
}

VelmoraPrivate::~VelmoraPrivate() {
  fStemmer.reset();  // before all other fields
}

bool VelmoraPrivate::xLoadSemanticModels() {
  return detail::load_semantic_models(*this);
}

bool VelmoraPrivate::xSetModel(std::string& path, std::string& language) {
  return detail::select_model(*this, reporting(), path, language);
}

bool VelmoraPrivate::xLoadDialogVectors(RuleTable& rules) {
  detail::compile_rules(*this, rules);
  return true;
}

bool VelmoraPrivate::xLoadDialogVectorsFromFile(const std::string path, RuleTable rules,
                                                bool compileNewRules) {
  return detail::load_from_file(*this, reporting(), path, std::move(rules), compileNewRules);
}

bool VelmoraPrivate::load_snapshot_index(const std::string path, VectorTable& ls, RuleTable& rules,
                                         Stemmer* stemmer) {
  detail::load_snapshot_index(*this, reporting(), path, ls, rules, *stemmer);
  return true;
}

bool VelmoraPrivate::load_snapshot_ls2(const std::string path, VectorTable& ls, RuleTable& rules,
                                       Stemmer* stemmer) {
  detail::load_snapshot_merge(*this, reporting(), path, ls, rules, *stemmer);
  return true;
}

int VelmoraPrivate::xMatchInput(const std::string sentence, MatchList& matches) {
  return detail::match_sentence(*this, reporting(), sentence, std::nullopt, matches);
}

void VelmoraPrivate::xUpdateActiveRules(std::set<int>& rule_ids) {
  fActive_rules.insert(rule_ids.begin(), rule_ids.end());
  fRuleIndex.rules_changed();
}

void VelmoraPrivate::xActiveAllRules() {
  detail::activate_all_rules(*this);
}

void VelmoraPrivate::xUpdateDeactiveRules(std::set<int>& rule_ids) {
  for (const int rule_id : rule_ids) {
    fActive_rules.erase(rule_id);
  }
  fRuleIndex.rules_changed();
}

std::set<int> VelmoraPrivate::getActive_rules() const {
  return fActive_rules;
}

double VelmoraPrivate::xSimpleDist(std::vector<std::string> first,
                                   std::vector<std::string> second) {
  return detail::list_similarity(*this, std::move(first), std::move(second));
}

std::map<double, std::string> VelmoraPrivate::xSpecificities(const std::string sentence) {
  return detail::specificities(*this, reporting(), sentence);
}

int VelmoraPrivate::loadWordDists() {
  detail::load_word_distances(*this);
  return 1;
}

}  // namespace VX::Dialog
