#include "contenders.hpp"

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>
#include <stdexcept>

#include <velmora/dictionary.hpp>
#include <velmora/velmora.hpp>

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

/// Word id to weight, of length 1.
using SparseVector = std::map<int, double>;

SparseVector unit_vector(const std::set<std::string>& stems, const KnownWords& words,
                         const std::map<int, double>& idf) {
  SparseVector vector;
  double square = 0.0;
  for (const std::string& stem : stems) {
    const int word_id = words.vocabulary().at(stem);
    const auto entry = idf.find(word_id);
    const double weight = entry == idf.end() ? 1.0 : entry->second;
    vector[word_id] = weight;
    square += weight * weight;
  }
  for (auto& [word_id, weight] : vector) {
    if (square > 0.0) {
      weight /= std::sqrt(square);
    }
  }
  return vector;
}

std::set<std::string> stems_of(const std::vector<std::string>& sentences, KnownWords& words) {
  std::set<std::string> stems;
  for (const std::string& sentence : sentences) {
    for (const std::string& stem : words.of(sentence)) {
      stems.insert(stem);
    }
  }
  return stems;
}

/// Rules by word: word id to (rule id, weight).
using InvertedIndex = std::map<int, std::vector<std::pair<int, double>>>;

/// Each label's best dot product with the query.
std::map<std::string, double> label_scores(const InvertedIndex& index, const RuleSet& rules,
                                           const SparseVector& query) {
  std::map<int, double> rule_scores;
  for (const auto& [word_id, weight] : query) {
    const auto entry = index.find(word_id);
    if (entry == index.end()) {
      continue;
    }
    for (const auto& [rule_id, rule_weight] : entry->second) {
      rule_scores[rule_id] += weight * rule_weight;
    }
  }
  std::map<std::string, double> scores;
  for (const auto& [rule_id, rule] : rules) {
    scores.emplace(rule.label, 0.0);
  }
  for (const auto& [rule_id, score] : rule_scores) {
    double& best = scores[rules.at(rule_id).label];
    best = std::max(best, score);
  }
  return scores;
}

double dot(const SparseVector& first, const SparseVector& second) {
  double sum = 0.0;
  for (const auto& [word_id, weight] : first) {
    const auto other = second.find(word_id);
    if (other != second.end()) {
      sum += weight * other->second;
    }
  }
  return sum;
}

}  // namespace

Contender latent_contender(const velmora::Model& model, KnownWords& words, const RuleSet& rules) {
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
  contender.similarity = [matcher, &words](const std::string& first, const std::string& second) {
    std::string unused;
    return matcher->engine.simpleDist(words.of(first), words.of(second), unused);
  };
  return contender;
}

Contender tfidf_contender(const velmora::Model& model, KnownWords& words, const RuleSet& rules) {
  std::string idf_path = (model.directory() / "idf").string();
  const auto idf = std::make_shared<const std::map<int, double>>(VX::Dialog::load_idf(idf_path));
  auto index = std::make_shared<InvertedIndex>();
  for (const auto& [rule_id, rule] : rules) {
    for (const auto& [word_id, weight] :
         unit_vector(stems_of(rule.sentences, words), words, *idf)) {
      (*index)[word_id].emplace_back(rule_id, weight);
    }
  }
  const auto vector_of = [idf, &words](const std::string& sentence) {
    return unit_vector(stems_of({sentence}, words), words, *idf);
  };

  Contender contender;
  contender.name = "tf-idf";
  contender.rank = [=](const std::string& sentence, const GroupConsumer& consume) {
    std::map<double, std::vector<std::string>, std::greater<>> groups;
    for (const auto& [label, score] : label_scores(*index, rules, vector_of(sentence))) {
      groups[score].push_back(label);
    }
    for (const LabelGroup group : groups) {
      if (!consume(group)) {
        return;
      }
    }
  };
  contender.similarity = [vector_of](const std::string& first, const std::string& second) {
    return dot(vector_of(first), vector_of(second));
  };
  return contender;
}
