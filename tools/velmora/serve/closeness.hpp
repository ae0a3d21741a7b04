// How close the rules of a dialogue are to one another.
// Tested by tools/velmora/tests/serve_transport_test.py.
#pragma once

#include <cstddef>
#include <vector>

#include <Eigen/Core>

namespace serve {

/// vectors         D x n, a column a sentence, each of length 1 or 0
/// rule_of_column  for each column the index of its rule, rising from 0 to rule_count - 1
///
/// rule_count x rule_count, symmetric: the largest cosine of a sentence of the one rule with a
/// sentence of the other; 1 on the diagonal.
Eigen::MatrixXd rule_closeness(const Eigen::MatrixXd& vectors,
                               const std::vector<std::size_t>& rule_of_column,
                               std::size_t rule_count);

}  // namespace serve
