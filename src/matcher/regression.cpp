#include "regression.hpp"

#include <Eigen/Cholesky>

#include "compilation.hpp"

namespace velmora::detail {

namespace {

constexpr double kRidge = 0.5;
constexpr double kKernelRidge = 0.3;

// Adds share * (dot product of every two sentences) to the lower triangle of `kernel`.
void add_similarities(const std::vector<SparseVector>& sentences, double share,
                      Eigen::MatrixXd& kernel) {
  struct Posting {
    Eigen::Index sentence;
    double value;
  };
  std::vector<std::vector<Posting>> postings;
  for (std::size_t j = 0; j != sentences.size(); ++j) {
    const auto column = static_cast<Eigen::Index>(j);
    for (const Feature& feature : sentences[j]) {
      const auto id = static_cast<std::size_t>(feature.id);
      if (id >= postings.size()) {
        postings.resize(id + 1);
      }
      const auto value = static_cast<double>(feature.value);
      const double weight = share * value;
      postings[id].push_back({column, value});
      for (const Posting& other : postings[id]) {
        kernel(column, other.sentence) += weight * other.value;
      }
    }
  }
}

}  // namespace

Eigen::MatrixXd ridge_inverse(const Eigen::MatrixXd& latent) {
  const Eigen::Index dim = latent.rows();
  Eigen::MatrixXd system = Eigen::MatrixXd::Zero(dim, dim);
  system.selfadjointView<Eigen::Lower>().rankUpdate(latent);
  system.diagonal().array() += kRidge;
  return system.llt().solve(Eigen::MatrixXd::Identity(dim, dim));  // reads the lower triangle
}

Eigen::MatrixXd kernel_columns(const SentenceTable& sentences,
                               const std::vector<std::size_t>& rule_of, std::size_t rule_count) {
  const Eigen::Index n = sentences.latent.cols();
  Eigen::MatrixXd kernel = Eigen::MatrixXd::Zero(n, n);
  kernel.selfadjointView<Eigen::Lower>().rankUpdate(sentences.latent.transpose(), kKernelLatent);
  add_similarities(sentences.words, kKernelWords, kernel);
  add_similarities(sentences.characters, kKernelCharacters, kernel);
  kernel.diagonal().array() += kKernelRidge;
  Eigen::MatrixXd columns = Eigen::MatrixXd::Zero(n, static_cast<Eigen::Index>(rule_count));
  for (Eigen::Index j = 0; j != n; ++j) {
    columns(j, static_cast<Eigen::Index>(rule_of[static_cast<std::size_t>(j)])) = 1.0;
  }
  const Eigen::LLT<Eigen::Ref<Eigen::MatrixXd>, Eigen::Lower> factored(kernel);  // in place
  factored.solveInPlace(columns);
  return columns;
}

}  // namespace velmora::detail
