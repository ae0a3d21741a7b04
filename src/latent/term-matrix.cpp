#include <velmora/term-matrix.hpp>

#include "../support/tables.hpp"
#include "matrix-terms.hpp"

namespace VX::Dialog {

using detail::VectorTable;
using detail::WeightTable;

void read_smat_data_OPTIM(const WeightTable& weights, Eigen::SparseMatrix<double>& matrix) {
  Eigen::Index column = 0;
  for (const auto& [sentence_id, sentence_weights] : weights) {
    for (const auto& [word_id, weight] : detail::matrix_terms(sentence_weights, matrix.rows())) {
      if (column >= matrix.cols()) {
        break;
      }
      if (matrix.isCompressed()) {
        matrix.reserve(Eigen::VectorXi::Constant(matrix.cols(), 2));
      }
      matrix.coeffRef(word_id, column) = weight;
    }
    ++column;
  }
}

void mat2vec(const Eigen::MatrixXd& matrix, VectorTable& vectors) {
  for (Eigen::Index column = 0; column != matrix.cols(); ++column) {
    const double* first = matrix.data() + column * matrix.rows();
    vectors.emplace_back(first, first + matrix.rows());
  }
}

}  // namespace VX::Dialog
