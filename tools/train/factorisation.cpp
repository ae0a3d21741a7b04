// Both steps solve the same kind of system, so there is one solver. With H = m G + lambda I = L L'
// (Cholesky) and u~ = L^-1 u, the solution is L^-T times
//
//     U~ (I + c U~'U~)^-1 z      or      (I + c U~U~')^-1 U~ z,      c = 1 - m,
//
// an s by s system for a row of s values, or a D by D system when s is not below D. One change of
// coordinates serves all rows of a step. It also bounds the condition: m U~U~' is at most I, so
// that of either system is at most 1/m, and single precision is enough for them. Sums over the
// whole corpus (Gram matrices, F) are kept in double precision.
#include "factorisation.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <Eigen/Cholesky>

#include "parallel.hpp"
#include "random.hpp"

namespace velmora::trainer {

namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::MatrixXf;
using Eigen::VectorXf;

// Columns that are copied together before they enter a matrix product.
constexpr Index kPanelColumns = 256;
// A sum over all columns is made of this many partial sums, whatever the number of threads.
constexpr std::size_t kGramSlices = 32;

Index to_index(std::size_t number) {
  return static_cast<Index>(number);
}

double row_work(std::size_t row_size, int dim) {
  const double s = static_cast<double>(row_size);
  const double d = dim;
  return 2.0 * d * d + (s < d ? s * s * (d / 2.0 + s / 6.0) : d * d * (s / 2.0 + d / 6.0));
}

double side_work(const SparseRows& rows, int dim) {
  double work = 0.0;
  for (std::size_t row = 0; row != rows.rows(); ++row) {
    work += row_work(rows.row_size(row), dim);
  }
  return work;
}

// Solves the rows of one thread, in the coordinates in which H is the identity.
class RowSolver {
 public:
  RowSolver(const MatrixXf& whitened, float presence_weight)
      : whitened_(whitened),
        presence_weight_(presence_weight),
        dim_(whitened.rows()),
        panel_(dim_, std::max(dim_, kPanelColumns)),
        system_(dim_, dim_),
        unknowns_(dim_) {}

  void solve(std::span<const std::int32_t> columns, std::span<const float> values,
             Eigen::Ref<VectorXf> result) {
    if (columns.empty()) {
      result.setZero();
    } else if (to_index(columns.size()) < dim_) {
      solve_by_values(columns, values, result);
    } else {
      solve_by_dimensions(columns, values, result);
    }
  }

 private:
  void copy_to_panel(std::span<const std::int32_t> columns) {
    for (std::size_t k = 0; k != columns.size(); ++k) {
      panel_.col(to_index(k)) = whitened_.col(columns[k]);
    }
  }

  void solve_by_values(std::span<const std::int32_t> columns, std::span<const float> values,
                       Eigen::Ref<VectorXf> result) {
    const Index size = to_index(columns.size());
    copy_to_panel(columns);
    auto panel = panel_.leftCols(size);
    auto system = system_.topLeftCorner(size, size);
    auto unknowns = unknowns_.head(size);
    system.setIdentity();
    system.selfadjointView<Eigen::Lower>().rankUpdate(panel.transpose(), presence_weight_);
    unknowns = Eigen::Map<const VectorXf>(values.data(), size);
    Eigen::LLT<Eigen::Ref<MatrixXf>> factored(system);
    factored.solveInPlace(unknowns);
    result.noalias() = panel * unknowns;
  }

  void solve_by_dimensions(std::span<const std::int32_t> columns, std::span<const float> values,
                           Eigen::Ref<VectorXf> result) {
    system_.setIdentity();
    result.setZero();
    for (std::size_t begin = 0; begin < columns.size(); begin += kPanelColumns) {
      const std::size_t size =
          std::min(columns.size() - begin, static_cast<std::size_t>(kPanelColumns));
      copy_to_panel(columns.subspan(begin, size));
      auto panel = panel_.leftCols(to_index(size));
      system_.selfadjointView<Eigen::Lower>().rankUpdate(panel, presence_weight_);
      result.noalias() += panel * Eigen::Map<const VectorXf>(&values[begin], to_index(size));
    }
    Eigen::LLT<Eigen::Ref<MatrixXf>> factored(system_);
    factored.solveInPlace(result);
  }

  const MatrixXf& whitened_;
  float presence_weight_;
  Index dim_;
  MatrixXf panel_;
  MatrixXf system_;
  VectorXf unknowns_;
};

// Multiplies every column by a D x D matrix, in place.
void multiply_columns(const MatrixXf& matrix, MatrixXf& columns, int threads) {
  const std::size_t panels =
      (static_cast<std::size_t>(columns.cols()) + kPanelColumns - 1) / kPanelColumns;
  for_each_piece(threads, panels, [&](std::size_t piece, int) {
    const Index begin = to_index(piece) * kPanelColumns;
    auto panel = columns.middleCols(begin, std::min(kPanelColumns, columns.cols() - begin));
    panel = matrix * panel;
  });
}

// Rows, longest first: the few very long ones must not be left for the end.
std::vector<std::size_t> rows_by_falling_size(const SparseRows& rows) {
  std::vector<std::size_t> order(rows.rows());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t first, std::size_t second) {
    return rows.row_size(first) > rows.row_size(second);
  });
  return order;
}

// The part of F at the stored places, for one word: the error there, less what the sum over all
// places already counts for them.
double stored_places_sum(const TrainingCorpus& corpus, std::size_t word,
                         const MatrixXf& word_factors, const MatrixXf& documents,
                         double missing_weight) {
  const auto columns = corpus.by_word.row_columns(word);
  const auto values = corpus.by_word.row_values(word);
  double sum = 0.0;
  for (std::size_t k = 0; k != columns.size(); ++k) {
    const double product = word_factors.col(to_index(word))
                               .cast<double>()
                               .dot(documents.col(columns[k]).cast<double>());
    const double error = product - static_cast<double>(values[k]);
    sum += error * error - missing_weight * product * product;
  }
  return sum;
}

// F. The documents come multiplied by the roots of their weights, which takes the weights out of
// the formula; the sum of m (p.q)^2 over all places is m times the inner product of the two Grams.
double objective(const TrainingCorpus& corpus, const FactorisationSettings& settings,
                 const MatrixXf& word_factors, const MatrixXf& documents,
                 const MatrixXd& document_gram) {
  std::vector<double> sums(corpus.by_word.rows());
  for_each_piece(settings.threads, sums.size(), [&](std::size_t word, int) {
    sums[word] = stored_places_sum(corpus, word, word_factors, documents, settings.missing_weight);
  });
  const MatrixXd word_gram = gram_matrix(word_factors, settings.threads);
  return std::accumulate(sums.begin(), sums.end(), 0.0) +
         settings.missing_weight * word_gram.cwiseProduct(document_gram).sum() +
         settings.lambda * (word_gram.trace() + document_gram.trace());
}

}  // namespace

TrainingCorpus make_training_corpus(SparseRows by_document, std::size_t vocabulary_size,
                                    const std::vector<double>& document_weights) {
  TrainingCorpus corpus;
  corpus.root_weights.reserve(document_weights.size());
  for (double weight : document_weights) {
    corpus.root_weights.push_back(static_cast<float>(std::sqrt(weight)));
  }
  corpus.by_word = transposed(by_document, vocabulary_size, corpus.root_weights);
  corpus.by_document = std::move(by_document);
  return corpus;
}

MatrixXf first_word_factors(int dim, std::size_t vocabulary_size, std::uint64_t start) {
  MatrixXf factors(dim, to_index(vocabulary_size));
  for (Index place = 0; place != factors.size(); ++place) {
    factors(place) = random_normal(start, static_cast<std::uint64_t>(place));
  }
  return factors;
}

MatrixXd gram_matrix(const MatrixXf& factors, int threads) {
  const Index dim = factors.rows();
  std::vector<MatrixXd> sums(kGramSlices, MatrixXd::Zero(dim, dim));
  for_each_piece(threads, kGramSlices, [&](std::size_t slice, int) {
    const Index begin = factors.cols() * to_index(slice) / to_index(kGramSlices);
    const Index end = factors.cols() * to_index(slice + 1) / to_index(kGramSlices);
    for (Index column = begin; column < end; column += kPanelColumns) {
      const MatrixXd panel =
          factors.middleCols(column, std::min(kPanelColumns, end - column)).cast<double>();
      sums[slice].selfadjointView<Eigen::Lower>().rankUpdate(panel);
    }
  });
  for (std::size_t slice = 1; slice != kGramSlices; ++slice) {
    sums[0] += sums[slice];
  }
  return sums[0].selfadjointView<Eigen::Lower>();
}

MatrixXf solve_side(const SparseRows& rows, const MatrixXf& given, const MatrixXd& gram,
                    const FactorisationSettings& settings,
                    const std::function<void(double)>& report) {
  const Index dim = given.rows();
  const MatrixXd constant_part =
      settings.missing_weight * gram + settings.lambda * MatrixXd::Identity(dim, dim);
  const MatrixXd root = constant_part.llt().matrixL();
  const MatrixXf whitening =
      root.triangularView<Eigen::Lower>().solve(MatrixXd::Identity(dim, dim)).cast<float>();
  MatrixXf whitened = given;
  multiply_columns(whitening, whitened, settings.threads);

  constexpr std::size_t kRowsPerPiece = 8;
  const std::vector<std::size_t> order = rows_by_falling_size(rows);
  const auto presence_weight = static_cast<float>(1.0 - settings.missing_weight);
  std::vector<RowSolver> solvers(static_cast<std::size_t>(settings.threads),
                                 RowSolver(whitened, presence_weight));
  MatrixXf result(dim, to_index(rows.rows()));
  const std::size_t pieces = (order.size() + kRowsPerPiece - 1) / kRowsPerPiece;
  for_each_piece(settings.threads, pieces, [&](std::size_t piece, int worker) {
    const std::size_t begin = piece * kRowsPerPiece;
    const std::size_t end = std::min(begin + kRowsPerPiece, order.size());
    double work = 0.0;
    for (std::size_t place = begin; place != end; ++place) {
      const std::size_t row = order[place];
      solvers[static_cast<std::size_t>(worker)].solve(rows.row_columns(row), rows.row_values(row),
                                                      result.col(to_index(row)));
      work += row_work(rows.row_size(row), settings.dim);
    }
    report(work);
  });
  multiply_columns(whitening.transpose(), result, settings.threads);
  return result;
}

double sweep_work(const TrainingCorpus& corpus, const FactorisationSettings& settings) {
  return side_work(corpus.by_document, settings.dim) + side_work(corpus.by_word, settings.dim);
}

double run_sweep(const TrainingCorpus& corpus, const FactorisationSettings& settings,
                 MatrixXf& word_factors, const std::function<void(double)>& report) {
  MatrixXf documents = solve_side(corpus.by_document, word_factors,
                                  gram_matrix(word_factors, settings.threads), settings, report);
  documents *=
      Eigen::Map<const VectorXf>(corpus.root_weights.data(), to_index(corpus.root_weights.size()))
          .asDiagonal();
  const MatrixXd document_gram = gram_matrix(documents, settings.threads);
  word_factors = solve_side(corpus.by_word, documents, document_gram, settings, report);
  return objective(corpus, settings, word_factors, documents, document_gram);
}

}  // namespace velmora::trainer
