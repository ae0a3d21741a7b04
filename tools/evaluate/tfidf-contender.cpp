// The contender that compares tf-idf vectors.
#include <algorithm>
#include <cmath>
#include <memory>

#include "contenders.hpp"
#include "idf-table.hpp"
#include "known-words.hpp"

namespace {

/// Stem to weight, of length 1.
using SparseVector = std::map<std::string, double>;
using IdfTable = std::map<std::string, double>;

SparseVector unit_vector(const std::vector<std::string>& sentences, const velmora::Model& model,
                         const IdfTable& idf) {
  SparseVector vector;
  for (const std::string& sentence : sentences) {
    for (const std::string& stem : known_stems(model, sentence)) {
      vector.emplace(stem, idf.at(stem));
    }
  }
  double square = 0.0;
  for (const auto& [stem, weight] : vector) {
    square += weight * weight;
  }
  for (auto& [stem, weight] : vector) {
    if (square > 0.0) {
      weight /= std::sqrt(square);
    }
  }
  return vector;
}

/// Rules by stem: (rule id, weight).
using InvertedIndex = std::map<std::string, std::vector<std::pair<int, double>>>;

/// Each label's best dot product with the query.
std::map<std::string, double> label_scores(const InvertedIndex& index, const RuleSet& rules,
                                           const SparseVector& query) {
  std::map<int, double> rule_scores;
  for (const auto& [stem, weight] : query) {
    const auto entry = index.find(stem);
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
  for (const auto& [stem, weight] : first) {
    const auto other = second.find(stem);
    if (other != second.end()) {
      sum += weight * other->second;
    }
  }
  return sum;
}

}  // namespace

Contender tfidf_contender(const velmora::Model& model, const RuleSet& rules) {
  const auto idf = std::make_shared<const IdfTable>(idf_table(model));
  auto index = std::make_shared<InvertedIndex>();
  for (const auto& [rule_id, rule] : rules) {
    for (const auto& [stem, weight] : unit_vector(rule.sentences, model, *idf)) {
      (*index)[stem].emplace_back(rule_id, weight);
    }
  }
  const auto vector_of = [idf, model](const std::string& sentence) {
    return unit_vector({sentence}, model, *idf);
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
