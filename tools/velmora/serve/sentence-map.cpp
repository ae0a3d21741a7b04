#include "sentence-map.hpp"

#include <algorithm>

#include <Eigen/Eigenvalues>

namespace serve {

namespace {

Eigen::MatrixXd without_zeros(const Eigen::MatrixXd& vectors) {
  Eigen::MatrixXd kept(vectors.rows(), vectors.cols());
  Eigen::Index count = 0;
  for (const auto& column : vectors.colwise()) {
    if (!column.isZero(0.0)) {
      kept.col(count++) = column;
    }
  }
  kept.conservativeResize(Eigen::NoChange, count);
  return kept;
}

// The two axes of the largest spread as rows; an axis points to where its largest coefficient is
// positive, so that the same rules always give the same map.
Eigen::MatrixXd principal_axes(const Eigen::MatrixXd& centred) {
  Eigen::MatrixXd axes = Eigen::MatrixXd::Zero(2, centred.rows());
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> solver(centred * centred.transpose());
  const Eigen::Index count = std::min<Eigen::Index>(2, centred.rows());
  for (Eigen::Index axis = 0; axis != count; ++axis) {
    Eigen::VectorXd direction = solver.eigenvectors().col(centred.rows() - 1 - axis);
    Eigen::Index largest = 0;
    direction.cwiseAbs().maxCoeff(&largest);
    axes.row(axis) = (direction(largest) < 0.0 ? -direction : direction).transpose();
  }
  return axes;
}

}  // namespace

SentenceMap::SentenceMap(const Eigen::MatrixXd& vectors)
    : mean_(Eigen::VectorXd::Zero(vectors.rows())),
      axes_(Eigen::MatrixXd::Zero(2, vectors.rows())) {
  const Eigen::MatrixXd known = without_zeros(vectors);
  if (known.size() == 0) {
    return;
  }
  mean_ = known.rowwise().mean();
  const Eigen::MatrixXd centred = known.colwise() - mean_;
  axes_ = principal_axes(centred);
  for (Eigen::Index axis = 0; axis != 2; ++axis) {
    const double reach = (axes_.row(axis) * centred).cwiseAbs().maxCoeff();
    if (reach > 0.0) {
      axes_.row(axis) /= reach;
    }
  }
}

std::optional<Point> SentenceMap::place(const Eigen::VectorXd& vector) const {
  if (vector.isZero(0.0)) {
    return std::nullopt;
  }
  const Eigen::Vector2d point = axes_ * (vector - mean_);
  return Point{std::clamp(point.x(), -1.0, 1.0), std::clamp(point.y(), -1.0, 1.0)};
}

}  // namespace serve
