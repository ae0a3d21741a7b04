#include "app-model-private.hpp"

#include <velmora/debug.hpp>

#include "../engine/matching.hpp"
#include "../engine/model-selection.hpp"
#include "../engine/rule-compilation.hpp"
#include "../engine/warm-start.hpp"
#include "../support/log-site.hpp"

namespace VX::Dialog {

namespace {

EngineKind kind() {
  return {detail::app_command_log, DEBUGAPP, /*guard_tells_active=*/false};
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
  return detail::select_model(*this, kind(), path, language);
}

bool AppModelPrivate::xLoadDialogVectors(std::map<int, std::vector<std::string>>& rules) {
  return detail::compile_rules(*this, rules);
}

bool AppModelPrivate::xLoadDialogVectorsFromFile(const std::string path,
                                                 std::map<int, std::vector<std::string>> rules,
                                                 bool compileNewRules) {
  return detail::load_from_file(*this, kind(), path, std::move(rules), compileNewRules);
}

bool AppModelPrivate::load_snapshot_index(const std::string path,
                                          std::vector<std::vector<double>>& ls,
                                          std::map<int, std::vector<std::string>>& rules,
                                          Stemmer* stemmer) {
  return detail::load_snapshot_index(*this, kind(), path, ls, rules, *stemmer);
}

bool AppModelPrivate::load_snapshot_ls2(const std::string path,
                                        std::vector<std::vector<double>>& ls,
                                        std::map<int, std::vector<std::string>>& rules,
                                        Stemmer* stemmer) {
  return detail::load_snapshot_merge(*this, kind(), path, ls, rules, *stemmer);
}

int AppModelPrivate::xMatchInput(const std::string sentence,
                                 std::vector<std::pair<double, std::vector<int>>>& matches,
                                 double threshold) {
  return detail::match_sentence(*this, kind(), sentence, threshold, matches);
}

bool AppModelPrivate::xActiveAllRules() {
  detail::activate_all_rules(*this);
  return true;
}

}  // namespace VX::Dialog
