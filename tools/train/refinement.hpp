// Refines trained word factors so that folded texts tell their subjects apart.
//
// Least squares asks each text to be described; matching asks more: that two texts on one thing lie
// closer to each other than to any other text. So steps follow in which pairs of random extracts of
// one document, folded in as the library does it, are drawn together and away from the extracts of
// the other documents of the step. With e(i) and f(i) the folded extracts of document i, brought to
// length 1, and t the temperature, a step lowers
//
//     sum_i  -log( exp(e(i).f(i)/t) / sum_j exp(e(i).f(j)/t) )
//            -log( exp(e(i).f(i)/t) / sum_j exp(e(j).f(i)/t) )
//
// (A. van den Oord, Y. Li, O. Vinyals, "Representation Learning with Contrastive Predictive
// Coding", 2018) by a gradient step on the factors of the words that occur (D. Kingma, J. Ba,
// "Adam: A Method for Stochastic Optimization", ICLR 2015).
//
// Results are the same, bit for bit, for any number of threads and on any machine of one
// architecture. Used by training.cpp. Tested by tools/train/tests/refinement-test.cpp.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <Eigen/Core>

#include "factorisation.hpp"

namespace velmora::trainer {

struct RefinementSettings {
  /// 0: factors stay as they are.
  int steps = 0;
  /// Documents a step.
  int batch = 256;
  double temperature = 0.1;
  /// Ridge term of the fold-in during the steps; 0: that of inference.
  double lambda = 0.0;
  /// Length of the first step; falls evenly to 0.
  double rate = 0.003;
};

/// Some words of a document, rising, and their tf-idf weights.
struct Extract {
  std::vector<std::int32_t> words;
  std::vector<float> values;
};

/// Two extracts of each document of a step.
struct ExtractPairs {
  std::vector<Extract> first;
  std::vector<Extract> second;
};

/// The fold-in with its constant part H = (m G + lambda I)^-1 held fixed:
/// q = H U (I + c U'HU)^-1 z.
struct FixedFoldIn {
  Eigen::MatrixXf constant_inverse;  // H
  float presence_weight = 1.0F;      // c = 1 - m
};

/// Adds the derivative of the sum above, divided by the number of pairs, to the columns of
/// `gradient` (D x V) of the words that occur; returns the sum, divided likewise.
double add_contrast_gradient(const ExtractPairs& pairs, const Eigen::MatrixXf& word_factors,
                             const FixedFoldIn& fold_in, double temperature, int threads,
                             Eigen::MatrixXf& gradient);

/// Runs the steps. Documents are drawn by their weights.
///
/// word_factors   D x V, in and out; their mean square length is 1 before and after
/// lambda         ridge term of the fold-in, in and out: as the lengths grow in the steps and are
///                brought back at the end, it is brought down with them
/// report         called with 1 after each step
void refine(const TrainingCorpus& corpus, const RefinementSettings& settings, double missing_weight,
            int threads, std::uint64_t start, Eigen::MatrixXf& word_factors, double& lambda,
            const std::function<void(double)>& report);

}  // namespace velmora::trainer
