// The contender that matches through the published classes.
#include <memory>
#include <set>
#include <stdexcept>

#include <velmora/velmora.hpp>

#include "contenders.hpp"
#include "known-words.hpp"
#include "published-model.hpp"

namespace {

using VX::Dialog::Velmora;
using Matches = std::vector<std::pair<double, std::vector<int>>>;

/// The latent matcher, its rules and which of them bear a label.
struct LatentMatcher {
  Velmora engine;
  std::vector<std::string> label_of;
  std::map<std::string, std::set<int>> rules_of;
};

Matches match(LatentMatcher& matcher, const std::string& sentence) {
  Matches matches;
  std::string ignored;
  if (matcher.engine.matchInput(sentence, matches, ignored) != 1) {
    throw std::runtime_error("matching is not possible: the model is damaged");
  }
  return matches;
}

/// Labels of a score group that were not met before, each once.
std::vector<std::string> new_labels(const LatentMatcher& matcher, const std::vector<int>& rule_ids,
                                    std::set<std::string>& met) {
  std::set<std::string> labels;
  for (const int rule_id : rule_ids) {
    const std::string& label = matcher.label_of[static_cast<std::size_t>(rule_id)];
    if (met.insert(label).second) {
      labels.insert(label);
    }
  }
  return {labels.begin(), labels.end()};
}

void rank_by_turns(LatentMatcher& matcher, const std::string& sentence,
                   const GroupConsumer& consume) {
  std::string ignored;
  std::set<std::string> met;
  bool wanted = true;
  while (wanted && met.size() != matcher.rules_of.size()) {
    for (const auto& [score, rule_ids] : match(matcher, sentence)) {
      const std::vector<std::string> labels = new_labels(matcher, rule_ids, met);
      if (!labels.empty()) {
        wanted = consume({score, labels});
      }
      if (!wanted) {
        break;
      }
    }
    for (const std::string& label : met) {
      matcher.engine.updateDeactiveRules(matcher.rules_of[label], ignored);
    }
  }
  matcher.engine.activeAllRules(ignored);
}

}  // namespace

Contender latent_contender(const velmora::Model& model, const RuleSet& rules) {
  auto matcher = std::make_shared<LatentMatcher>();
  const PublishedModel published(model.directory(), model.language());
  std::string base = published.base();
  std::string language = model.language();
  std::string ignored;
  if (!matcher->engine.setModel(base, language)) {
    throw std::runtime_error("the model in " + model.directory().string() + " could not be loaded");
  }
  std::map<int, std::vector<std::string>> sentences;
  for (const auto& [rule_id, rule] : rules) {
    sentences[rule_id] = rule.sentences;
    matcher->label_of.push_back(rule.label);
    matcher->rules_of[rule.label].insert(rule_id);
  }
  if (!rules.empty()) {
    matcher->engine.loadDialogVectors(ignored, sentences);
  }
  matcher->engine.activeAllRules(ignored);

  Contender contender;
  contender.name = "latent";
  contender.rank = [matcher](const std::string& sentence, const GroupConsumer& consume) {
    rank_by_turns(*matcher, sentence, consume);
  };
  contender.similarity = [matcher, model](const std::string& first, const std::string& second) {
    std::string unused;
    return matcher->engine.simpleDist(known_stems(model, first), known_stems(model, second),
                                      unused);
  };
  return contender;
}
