#include "closeness.hpp"

#include <algorithm>

namespace serve {

Eigen::MatrixXd rule_closeness(const Eigen::MatrixXd& vectors,
                               const std::vector<std::size_t>& rule_of_column,
                               std::size_t rule_count) {
  const auto size = static_cast<Eigen::Index>(rule_count);
  Eigen::MatrixXd closeness = Eigen::MatrixXd::Constant(size, size, -1.0);
  for (Eigen::Index column = 0; column != vectors.cols(); ++column) {
    const Eigen::VectorXd cosines = vectors.transpose() * vectors.col(column);
    const auto rule = static_cast<Eigen::Index>(rule_of_column[static_cast<std::size_t>(column)]);
    for (Eigen::Index other_column = 0; other_column != vectors.cols(); ++other_column) {
      const auto other =
          static_cast<Eigen::Index>(rule_of_column[static_cast<std::size_t>(other_column)]);
      closeness(other, rule) = std::max(closeness(other, rule), cosines(other_column));
    }
  }
  closeness.diagonal().setOnes();
  return closeness;
}

}  // namespace serve
