// How many words two sentences share, by their weight.
//
// A test sentence that shares hardly a word with its rule shows whether a matcher understands; one
// that repeats the rule's words shows only that it can count. Used by velmora-evaluate; tested by
// tools/evaluate/tests/evaluate-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/model.hpp>

class WordOverlap {
 public:
  explicit WordOverlap(const velmora::Model& model);

  /// Cosine of the two sentences, a stem weighing its idf squared: rare words decide. A stem
  /// outside of the dictionary weighs as much as the rarest one in it.
  double of(const std::string& first, const std::string& second) const;

 private:
  double weight(const std::string& stem) const;

  const velmora::Model& model_;
  std::map<std::string, double> idf_;
  double largest_idf_ = 1.0;
};

/// Whether a sentence has less than this overlap with every sentence of its rule.
constexpr double kLowOverlap = 0.2;
