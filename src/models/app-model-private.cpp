#include "app-model-private.hpp"

#include <velmora/debug.hpp>

#include "../engine/matching.hpp"
#include "../engine/model-selection.hpp"
#include "../engine/rule-compilation.hpp"
#include "../engine/warm-start.hpp"
#include "../support/log-site.hpp"
#include "../support/tables.hpp"

namespace VX::Dialog {

using detail::MatchList;
using detail::RuleTable;
using detail::VectorTable;

namespace {

detail::Reporting reporting() {
  return {detail::app_command_log, DEBUGAPP, /*refusal_counts_active=*/false};
}

}  // namespace

AppModelPrivate::AppModelPrivate() {
  fMaxResults = kMaxResults;
}

AppModelPrivate::AppModelPrivate(std::string language) {
  fMaxResults = kMaxResultsOfLanguage;
  fLanguage = std::move(language);
}

AppModelPrivate::~AppModelPrivate() {
  fStemmer.reset();  // before all other fields
}

bool AppModelPrivate::xLoadSemanticModels() {
  return detail::load_semantic_models(*this);
}

bool AppModelPrivate::xSetModel(const std::string& path, const std::string& language) {
  return detail::select_model(*this, reporting(), path, language);
}

bool AppModelPrivate::xLoadDialogVectors(RuleTable& rules) {
  detail::compile_rules(*this, rules);
  return true;
}

bool AppModelPrivate::xLoadDialogVectorsFromFile(const std::string path, RuleTable rules,
                                                 bool compileNewRules) {
  return detail::load_from_file(*this, reporting(), path, std::move(rules), compileNewRules);
}

bool AppModelPrivate::load_snapshot_index(const std::string path, VectorTable& ls, RuleTable& rules,
                                          Stemmer* stemmer) {
  detail::load_snapshot_index(*this, reporting(), path, ls, rules, *stemmer);
  return true;
}

bool AppModelPrivate::load_snapshot_ls2(const std::string path, VectorTable& ls, RuleTable& rules,
                                        Stemmer* stemmer) {
  detail::load_snapshot_merge(*this, reporting(), path, ls, rules, *stemmer);
  return true;
}

int AppModelPrivate::xMatchInput(const std::string sentence, MatchList& matches, double threshold) {
  return detail::match_sentence(*this, reporting(), sentence, threshold, matches);
}

bool AppModelPrivate::xActiveAllRules() {
  detail::activate_all_rules(*this);
  return true;
}

}  // namespace VX::Dialog
