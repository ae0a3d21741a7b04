// Weights of words, and the bridge to matrices. Tested by tests/text/text-tables-test.cpp.
#include <velmora/query-weighting.hpp>

#include "../support/log-site.hpp"
#include "matrix-terms.hpp"

namespace VX::Dialog {

void tfidf(const std::map<int, std::vector<int>>& word_ids, const std::map<int, double>& idf,
           std::map<int, std::map<int, double>>& weights) {
  for (const auto& [sentence_id, ids] : word_ids) {
    std::map<int, double> sentence_weights;
    for (const int word_id : ids) {
      sentence_weights[word_id] += 1.0;
    }
    for (auto& [word_id, weight] : sentence_weights) {
      const auto entry = idf.find(word_id);
      if (entry != idf.end()) {
        weight *= entry->second;
      } else {
        // The count stays as the weight: the word counts as if its idf were 1.
        VELMORA_LOG(detail::query_log, zu::log::Level::info, "tfidf")
            << word_id << " does not exist";
      }
    }
    weights[sentence_id] = std::move(sentence_weights);
  }
}

void read_smat_data_OPTIM(const std::map<int, std::map<int, double>>& weights,
                          Eigen::SparseMatrix<double>& matrix) {
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

void mat2vec(const Eigen::MatrixXd& matrix, std::vector<std::vector<double>>& vectors) {
  for (Eigen::Index column = 0; column != matrix.cols(); ++column) {
    const double* first = matrix.data() + column * matrix.rows();
    vectors.emplace_back(first, first + matrix.rows());
  }
}

}  // namespace VX::Dialog
