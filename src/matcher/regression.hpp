// The two regressions from sentences to rules.
//
// Solved once when rules are compiled. Not installed. Tested by tests/matcher/matcher-test.cpp.
#pragma once

#include <vector>

#include <Eigen/Core>

#include "rule-index.hpp"

namespace velmora::detail {

/// (F'F + 0.5 I)^-1, D x D, for the latent vectors F' (D x n) of all sentences.
Eigen::MatrixXd ridge_inverse(const Eigen::MatrixXd& latent);

/// (K + 0.3 I)^-1 M, n x rules: K is the similarity of the sentences in all three views, M says
/// which rule each belongs to.
Eigen::MatrixXd kernel_columns(const SentenceTable& sentences,
                               const std::vector<std::size_t>& rule_of, std::size_t rule_count);

}  // namespace velmora::detail
