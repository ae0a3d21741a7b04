// Sentences as points in two dimensions: the principal components of their latent vectors.
// Tested by tools/velmora/tests/serve_transport_test.py.
#pragma once

#include <optional>
#include <vector>

#include <Eigen/Core>

namespace serve {

struct Point {
  double x = 0.0;
  double y = 0.0;
};

/// Projects D dimensions to the two in which a set of vectors differs most (K. Pearson, "On lines
/// and planes of closest fit to systems of points in space", 1901), scaled so that the set fills -1
/// to 1.
class SentenceMap {
 public:
  /// vectors   D x n, a column a sentence; columns of zeros take no part
  explicit SentenceMap(const Eigen::MatrixXd& vectors);

  /// The place of a vector of D values, cut to -1 to 1; nothing for a vector of zeros.
  std::optional<Point> place(const Eigen::VectorXd& vector) const;

 private:
  Eigen::VectorXd mean_;
  Eigen::MatrixXd axes_;  // 2 x D
};

}  // namespace serve
