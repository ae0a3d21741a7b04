// What velmora-evaluate compares: the published classes, velmora::Matcher, and plain tf-idf.
//
// All see the same stems, dictionary and idf table; only the measure differs. Tested by
// tools/evaluate/tests/evaluate-test.cpp.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <velmora/model.hpp>

/// A rule of the test dialogue: sentences of one label.
struct LabelledRule {
  std::string label;
  std::vector<std::string> sentences;
};

/// Rules by id, from 0, each with a known word.
using RuleSet = std::map<int, LabelledRule>;

/// Labels with their best score, best first: groups of equal score. A consumer returns false when
/// it has seen enough.
using LabelGroup = std::pair<double, std::vector<std::string>>;
using GroupConsumer = std::function<bool(const LabelGroup&)>;

struct Contender {
  std::string name;
  /// Hands over the groups of labels for a sentence, best first, each label once, with the score of
  /// its best rule.
  std::function<void(const std::string& sentence, const GroupConsumer&)> rank;
  /// Similarity of two sentences; empty when it can't tell.
  std::function<double(const std::string& first, const std::string& second)> similarity;
};

/// The published classes. `rules` may be empty when only similarities are asked for. A ranking goes
/// on beyond the 21 scores of one match: labels that were found are switched off for the next turn.
/// Throws std::runtime_error when the model can't be loaded.
Contender latent_contender(const velmora::Model& model, const RuleSet& rules);

/// velmora::Matcher over the same rules.
Contender matcher_contender(const velmora::Model& model, const RuleSet& rules);

/// Cosine of idf weights over the known stems, each stem counted once.
Contender tfidf_contender(const velmora::Model& model, const RuleSet& rules);
