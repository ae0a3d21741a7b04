#include <velmora/app-model.hpp>

#include "../support/checked-lookup.hpp"
#include "../support/log-site.hpp"
#include "../support/tables.hpp"
#include "app-model-private.hpp"

namespace VX::Dialog {

using detail::MatchList;
using detail::RuleTable;

AppModel::AppModel() : engine_(std::make_unique<AppModelPrivate>()) {
  engine_->fRuleIndex.trust_tables();
}

AppModel::~AppModel() = default;

bool AppModel::setModel(const std::string path, const std::string language,
                        std::map<std::string, std::vector<std::string>>& applications) {
  RuleTable rules;
  int number = 0;
  for (const auto& [name, sentences] : applications) {
    rules[number] = sentences;
    fAppNames[number] = name;  // higher numbers of an earlier, longer table stay
    ++number;
  }
  if (!engine_->xSetModel(path, language) || !engine_->xLoadSemanticModels() ||
      !engine_->xLoadDialogVectors(rules)) {
    return false;  // the names stay entered
  }
  engine_->xActiveAllRules();
  fReady = true;
  return true;
}

bool AppModel::isReady() {
  return fReady;
}

int AppModel::matchInput(const std::string sentence,
                         std::vector<std::pair<double, std::vector<std::string>>>& matches,
                         double threshold) {
  if (fAppNames.empty()) {
    VELMORA_LOG(detail::app_data_log, zu::log::Level::warning, "matchInput")
        << "no application indexed";
    return -1;
  }
  MatchList numbered;
  // When the engine refuses, nothing is appended and the result is 1 all the same.
  (void)engine_->xMatchInput(sentence, numbered, threshold);
  for (const auto& [score, numbers] : numbered) {
    std::vector<std::string> names;
    for (const int number : numbers) {
      names.push_back(detail::checked_lookup(fAppNames, number));
    }
    matches.emplace_back(score, std::move(names));
  }
  return 1;
}

}  // namespace VX::Dialog
