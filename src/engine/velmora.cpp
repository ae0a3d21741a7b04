#include <velmora/velmora.hpp>

#include "../support/tables.hpp"
#include "velmora-private.hpp"

namespace VX::Dialog {

using detail::MatchList;
using detail::RuleTable;

Velmora::Velmora() : engine_(std::make_unique<VelmoraPrivate>()) {
  engine_->fRuleIndex.trust_tables();
}

Velmora::~Velmora() = default;

std::vector<std::string> Velmora::getAvailableLanguages() {
  return {"frf", "enu", "jpj"};
}

bool Velmora::setModel(std::string& path, std::string& language) {
  return engine_->xSetModel(path, language);
}

bool Velmora::loadSemanticModels(std::string& /*ignored*/) {
  return engine_->xLoadSemanticModels();
}

bool Velmora::loadDialogVectors(std::string& /*ignored*/, RuleTable rules) {
  return engine_->xLoadDialogVectors(rules);
}

bool Velmora::loadDialogVectorsFromFile(const std::string path, RuleTable rules,
                                        const std::string& /*ignored*/, bool compileNewRules) {
  return engine_->xLoadDialogVectorsFromFile(path, std::move(rules), compileNewRules);
}

int Velmora::matchInput(const std::string sentence, MatchList& matches, std::string& /*ignored*/) {
  return engine_->xMatchInput(sentence, matches);
}

void Velmora::activeAllRules(std::string& /*ignored*/) {
  engine_->xActiveAllRules();
}

void Velmora::updateActiveRules(std::set<int> rule_ids, std::string& /*ignored*/) {
  engine_->xUpdateActiveRules(rule_ids);
}

void Velmora::updateDeactiveRules(std::set<int> rule_ids, std::string& /*ignored*/) {
  engine_->xUpdateDeactiveRules(rule_ids);
}

double Velmora::simpleDist(std::vector<std::string> first, std::vector<std::string> second,
                           std::string& /*ignored*/) {
  return engine_->xSimpleDist(std::move(first), std::move(second));
}

std::map<double, std::string> Velmora::getSpecificities(const std::string sentence,
                                                        std::string& /*ignored*/) {
  // The published operation computes, logs, and answers with an empty map all the same.
  (void)engine_->xSpecificities(sentence);
  return {};
}

int Velmora::loadWordDistIndex(std::string& /*ignored*/) {
  return engine_->loadWordDists();
}

}  // namespace VX::Dialog
