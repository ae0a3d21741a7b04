#include <iostream>

#include <velmora/matrix-files.hpp>

Eigen::IOFormat HeavyFmt(Eigen::FullPrecision, 0, ", ", "\n", "[", "]", "[", "]");

namespace VX::Dialog {

namespace {

// Prints "[value value ]", the elements above 0 alone.
template <typename Vector>
void print_positive(const Vector& vector) {
  std::cout << "[";
  for (Eigen::Index i = 0; i != vector.size(); ++i) {
    if (vector.coeff(i) > 0.0) {
      std::cout << vector.coeff(i) << " ";
    }
  }
  std::cout << "]\n";
}

}  // namespace

void print_smat_nnz(Eigen::SparseMatrix<double> matrix) {
  for (Eigen::Index column = 0; column != matrix.outerSize(); ++column) {
    std::cout << "[";
    for (Eigen::SparseMatrix<double>::InnerIterator entry(matrix, column); entry; ++entry) {
      std::cout << entry.value() << " ";
    }
    std::cout << "]\n";
  }
}

void print_vec_nnz(Eigen::VectorXd vector) {
  print_positive(vector);
}

}  // namespace VX::Dialog

void print_vec_(Eigen::VectorXd vector) {
  VX::Dialog::print_positive(vector);
}

void print_svec_nnz(Eigen::SparseVector<double> vector) {
  VX::Dialog::print_positive(vector);
}

void print_mat_(Eigen::MatrixXd matrix) {
  for (const auto& column : matrix.colwise()) {
    VX::Dialog::print_positive(column);
  }
}
