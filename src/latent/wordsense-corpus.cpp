#include <memory>

#include <velmora/wordsense-corpus.hpp>

wordsense_corpus::wordsense_corpus()
    : data_cols(nullptr), data_t_cols(nullptr), weights_cols(nullptr), weights_t_cols(nullptr) {}

wordsense_corpus::~wordsense_corpus() = default;

namespace VX::Dialog {

namespace {

using Columns = std::unique_ptr<Eigen::VectorXd[]>;

}  // namespace

bool initialize_wordsense_corpus(wordsense_corpus& corpus, Eigen::SparseMatrix<double>& data) {
  corpus.data = data;
  initialize_weights(corpus.weights, corpus.data);
  corpus.data_t = corpus.data.transpose();
  corpus.weights_t = corpus.weights.transpose();
  // Handed over together, so that a failed allocation leaves nothing behind.
  Columns data_t_cols(get_smat_value(corpus.data_t));
  Columns data_cols(get_smat_value(corpus.data));
  Columns weights_t_cols(get_smat_value(corpus.weights_t));
  Columns weights_cols(get_smat_value(corpus.weights));
  corpus.data_t_cols = data_t_cols.release();
  corpus.data_cols = data_cols.release();
  corpus.weights_t_cols = weights_t_cols.release();
  corpus.weights_cols = weights_cols.release();
  return true;
}

void initialize_weights(Eigen::SparseMatrix<double>& weights, Eigen::SparseMatrix<double>& data) {
  weights = data;
  for (Eigen::Index column = 0; column != weights.outerSize(); ++column) {
    for (Eigen::SparseMatrix<double>::InnerIterator entry(weights, column); entry; ++entry) {
      entry.valueRef() = 1.0;
    }
  }
}

Eigen::VectorXd* get_smat_value(Eigen::SparseMatrix<double>& matrix) {
  Columns columns = std::make_unique<Eigen::VectorXd[]>(static_cast<std::size_t>(matrix.cols()));
  for (Eigen::Index column = 0; column != matrix.outerSize(); ++column) {
    Eigen::VectorXd& dense = columns[static_cast<std::size_t>(column)];
    dense.setZero(matrix.rows());
    for (Eigen::SparseMatrix<double>::InnerIterator entry(matrix, column); entry; ++entry) {
      dense(entry.row()) = entry.value();
    }
  }
  return columns.release();
}

void delete_wordsense_corpus(wordsense_corpus& corpus) {
  // The pointers keep their values: a record that was taken apart is not to be used again.
  delete[] corpus.data_cols;
  delete[] corpus.data_t_cols;
  delete[] corpus.weights_cols;
  delete[] corpus.weights_t_cols;
}

Eigen::SparseMatrix<double> transpose(Eigen::SparseMatrix<double>& matrix) {
  // The shape is exchanged and the coordinates are not; that is what the operation is for.
  Eigen::SparseMatrix<double> exchanged(matrix.cols(), matrix.rows());
  for (Eigen::Index column = 0; column != matrix.outerSize(); ++column) {
    for (Eigen::SparseMatrix<double>::InnerIterator entry(matrix, column); entry; ++entry) {
      if (entry.row() < exchanged.rows() && column < exchanged.cols()) {
        exchanged.insert(entry.row(), column) = entry.value();
      }
    }
  }
  return exchanged;
}

}  // namespace VX::Dialog
