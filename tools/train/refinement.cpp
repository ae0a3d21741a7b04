// With U the factors of an extract, z its values, A = I + c U'HU, a = A^-1 z, q = H U a, and g the
// derivative of the sum by q, the derivative by the factors of the k-th word is
//
//     a(k) (H g - H U b) - b(k) q,      b = c A^-1 U'H g.
//
// H follows the factors only now and then: it hardly moves, and costs a pass over all words.
#include "refinement.hpp"

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

constexpr int kStepsPerConstantPart = 50;
// Shares of a document's words that an extract takes.
constexpr double kSmallestShare = 0.4;
constexpr double kLargestShare = 0.8;
// Usual settings of the step rule.
constexpr float kMeanDecay = 0.9F;
constexpr float kSquareDecay = 0.999F;
constexpr float kTiny = 1e-8F;

Index to_index(std::size_t number) {
  return static_cast<Index>(number);
}

// exp(x) for x <= 0. The mathematics library picks another variant of its own on other processors,
// and a last bit that differs grows from step to step.
double exponential(double x) {
  const double part = std::max(x, -700.0) / 4096.0;
  double power = 1.0 + part * (1.0 + part / 2.0 * (1.0 + part / 3.0 * (1.0 + part / 4.0)));
  for (int doubling = 0; doubling != 12; ++doubling) {
    power *= power;
  }
  return power;
}

struct FoldedExtract {
  MatrixXf solved_factors;  // H U
  Eigen::LLT<MatrixXf> system;
  VectorXf shares;  // a
  VectorXf vector;  // q
  float length = 0.0F;
};

FoldedExtract fold(const Extract& extract, const MatrixXf& word_factors,
                   const FixedFoldIn& fold_in) {
  const Index size = to_index(extract.words.size());
  MatrixXf factors(word_factors.rows(), size);
  for (Index k = 0; k != size; ++k) {
    factors.col(k) = word_factors.col(extract.words[static_cast<std::size_t>(k)]);
  }
  FoldedExtract folded;
  folded.solved_factors = fold_in.constant_inverse * factors;
  MatrixXf system = fold_in.presence_weight * (factors.transpose() * folded.solved_factors);
  system.diagonal().array() += 1.0F;
  folded.system.compute(system);
  folded.shares = folded.system.solve(Eigen::Map<const VectorXf>(extract.values.data(), size));
  folded.vector = folded.solved_factors * folded.shares;
  folded.length = std::max(folded.vector.norm(), 1e-20F);
  return folded;
}

// Derivatives by the factors of the extract's words (D x words), from that by its unit vector.
MatrixXf factor_gradient(const FoldedExtract& folded, const FixedFoldIn& fold_in,
                         const VectorXf& by_unit_vector) {
  const VectorXf unit = folded.vector / folded.length;
  const VectorXf by_vector = (by_unit_vector - unit * unit.dot(by_unit_vector)) / folded.length;
  const VectorXf back =
      fold_in.presence_weight * folded.system.solve(folded.solved_factors.transpose() * by_vector);
  const VectorXf pull = fold_in.constant_inverse * by_vector - folded.solved_factors * back;
  return pull * folded.shares.transpose() - folded.vector * back.transpose();
}

std::vector<FoldedExtract> fold_all(const std::vector<Extract>& extracts,
                                    const MatrixXf& word_factors, const FixedFoldIn& fold_in,
                                    int threads, MatrixXf& units) {
  std::vector<FoldedExtract> folded(extracts.size());
  units.resize(word_factors.rows(), to_index(extracts.size()));
  for_each_piece(threads, extracts.size(), [&](std::size_t place, int) {
    folded[place] = fold(extracts[place], word_factors, fold_in);
    units.col(to_index(place)) = folded[place].vector / folded[place].length;
  });
  return folded;
}

// Replaces cosines by the derivatives of the sum by them; returns the sum. Both are divided by the
// number of pairs.
double contrast(MatrixXf& cosines, double temperature) {
  const Index size = cosines.cols();
  MatrixXd powers(size, size);
  for (Index place = 0; place != powers.size(); ++place) {
    powers(place) = exponential((static_cast<double>(cosines(place)) - 1.0) / temperature);
  }
  const Eigen::VectorXd row_sums = powers.rowwise().sum();
  const Eigen::RowVectorXd column_sums = powers.colwise().sum();
  const double scale = 1.0 / (temperature * static_cast<double>(size));
  double sum = 0.0;
  for (Index column = 0; column != size; ++column) {
    for (Index row = 0; row != size; ++row) {
      const double share =
          powers(row, column) / row_sums(row) + powers(row, column) / column_sums(column);
      cosines(row, column) = static_cast<float>(scale * (row == column ? share - 2.0 : share));
    }
    const double own = powers(column, column);
    sum -= std::log(own / row_sums(column)) + std::log(own / column_sums(column));
  }
  return sum / static_cast<double>(size);
}

void add_side(const std::vector<Extract>& extracts, const std::vector<FoldedExtract>& folded,
              const FixedFoldIn& fold_in, const MatrixXf& by_units, int threads,
              MatrixXf& gradient) {
  std::vector<MatrixXf> parts(extracts.size());
  for_each_piece(threads, extracts.size(), [&](std::size_t place, int) {
    parts[place] = factor_gradient(folded[place], fold_in, by_units.col(to_index(place)));
  });
  for (std::size_t place = 0; place != extracts.size(); ++place) {
    for (std::size_t k = 0; k != extracts[place].words.size(); ++k) {
      gradient.col(extracts[place].words[k]) += parts[place].col(to_index(k));
    }
  }
}

// A stream of random numbers.
class Dice {
 public:
  explicit Dice(std::uint64_t start) : start_(start) {}
  /// Even over [0, 1).
  double share() { return static_cast<double>(random_bits(start_, position_++) >> 11U) * 0x1p-53; }
  std::size_t below(std::size_t size) {
    return static_cast<std::size_t>(share() * static_cast<double>(size));
  }

 private:
  std::uint64_t start_;
  std::uint64_t position_ = 0;
};

void take_word(const SparseRows& documents, std::size_t place, Extract& extract) {
  extract.words.push_back(documents.column[place]);
  extract.values.push_back(documents.value[place]);
}

// Every word is in one of the extracts at least, and neither extract is empty.
void draw_extracts(const SparseRows& documents, std::size_t document, Dice& dice, Extract& first,
                   Extract& second) {
  const double share = kSmallestShare + (kLargestShare - kSmallestShare) * dice.share();
  const std::size_t begin = documents.row_begin[document];
  const std::size_t end = documents.row_begin[document + 1];
  for (std::size_t place = begin; place != end; ++place) {
    bool in_first = dice.share() < share;
    const bool in_second = dice.share() < share;
    bool only_second = false;
    if (!in_first && !in_second) {
      in_first = dice.share() < 0.5;
      only_second = !in_first;
    }
    if (in_first) {
      take_word(documents, place, first);
    }
    if (in_second || only_second) {
      take_word(documents, place, second);
    }
  }
  for (Extract* extract : {&first, &second}) {
    if (extract->words.empty()) {
      take_word(documents, begin + dice.below(end - begin), *extract);
    }
  }
}

// Chooses documents by weight.
class DocumentDraw {
 public:
  explicit DocumentDraw(const TrainingCorpus& corpus) {
    double sum = 0.0;
    for (float root : corpus.root_weights) {
      sum += static_cast<double>(root) * static_cast<double>(root);
      sums_.push_back(sum);
    }
  }
  std::size_t operator()(Dice& dice) const {
    const double point = dice.share() * sums_.back();
    const auto place = std::upper_bound(sums_.begin(), sums_.end(), point);
    return static_cast<std::size_t>(std::min(place, sums_.end() - 1) - sums_.begin());
  }

 private:
  std::vector<double> sums_;
};

ExtractPairs draw_pairs(const TrainingCorpus& corpus, const DocumentDraw& draw, int batch,
                        Dice& dice) {
  ExtractPairs pairs;
  pairs.first.resize(static_cast<std::size_t>(batch));
  pairs.second.resize(static_cast<std::size_t>(batch));
  for (std::size_t place = 0; place != pairs.first.size(); ++place) {
    draw_extracts(corpus.by_document, draw(dice), dice, pairs.first[place], pairs.second[place]);
  }
  return pairs;
}

std::vector<std::int32_t> words_of(const ExtractPairs& pairs) {
  std::vector<std::int32_t> words;
  for (const auto* side : {&pairs.first, &pairs.second}) {
    for (const Extract& extract : *side) {
      words.insert(words.end(), extract.words.begin(), extract.words.end());
    }
  }
  std::sort(words.begin(), words.end());
  words.erase(std::unique(words.begin(), words.end()), words.end());
  return words;
}

FixedFoldIn make_fold_in(const MatrixXf& word_factors, double lambda, double missing_weight,
                         int threads) {
  const Index dim = word_factors.rows();
  const MatrixXd constant_part =
      missing_weight * gram_matrix(word_factors, threads) + lambda * MatrixXd::Identity(dim, dim);
  FixedFoldIn fold_in;
  fold_in.constant_inverse = constant_part.llt().solve(MatrixXd::Identity(dim, dim)).cast<float>();
  fold_in.presence_weight = static_cast<float>(1.0 - missing_weight);
  return fold_in;
}

// The step rule: each factor moves by the running mean of its derivative over the running root mean
// square. Only words that occur move, and only their gradients are taken and cleared.
class Stepper {
 public:
  Stepper(Index rows, Index columns)
      : gradient(MatrixXf::Zero(rows, columns)),
        means_(MatrixXf::Zero(rows, columns)),
        squares_(MatrixXf::Zero(rows, columns)) {}

  MatrixXf gradient;

  void step(const std::vector<std::int32_t>& words, float rate, MatrixXf& word_factors) {
    mean_bias_ *= kMeanDecay;
    square_bias_ *= kSquareDecay;
    for (std::int32_t word : words) {
      for (Index row = 0; row != gradient.rows(); ++row) {
        const float slope = gradient(row, word);
        float& mean = means_(row, word);
        float& square = squares_(row, word);
        mean = kMeanDecay * mean + (1.0F - kMeanDecay) * slope;
        square = kSquareDecay * square + (1.0F - kSquareDecay) * slope * slope;
        word_factors(row, word) -= rate * (mean / (1.0F - mean_bias_)) /
                                   (std::sqrt(square / (1.0F - square_bias_)) + kTiny);
      }
      gradient.col(word).setZero();
    }
  }

 private:
  MatrixXf means_;
  MatrixXf squares_;
  float mean_bias_ = 1.0F;
  float square_bias_ = 1.0F;
};

}  // namespace

double add_contrast_gradient(const ExtractPairs& pairs, const MatrixXf& word_factors,
                             const FixedFoldIn& fold_in, double temperature, int threads,
                             MatrixXf& gradient) {
  MatrixXf first_units;
  MatrixXf second_units;
  const auto first = fold_all(pairs.first, word_factors, fold_in, threads, first_units);
  const auto second = fold_all(pairs.second, word_factors, fold_in, threads, second_units);
  MatrixXf by_cosines = first_units.transpose() * second_units;
  const double sum = contrast(by_cosines, temperature);
  const MatrixXf by_first = second_units * by_cosines.transpose();
  const MatrixXf by_second = first_units * by_cosines;
  add_side(pairs.first, first, fold_in, by_first, threads, gradient);
  add_side(pairs.second, second, fold_in, by_second, threads, gradient);
  return sum;
}

void refine(const TrainingCorpus& corpus, const RefinementSettings& settings, double missing_weight,
            int threads, std::uint64_t start, MatrixXf& word_factors, double& lambda,
            const std::function<void(double)>& report) {
  const DocumentDraw draw(corpus);
  Dice dice(start);
  Stepper stepper(word_factors.rows(), word_factors.cols());
  FixedFoldIn fold_in;
  for (int step = 0; step != settings.steps; ++step) {
    if (step % kStepsPerConstantPart == 0) {
      fold_in = make_fold_in(word_factors, lambda, missing_weight, threads);
    }
    const ExtractPairs pairs = draw_pairs(corpus, draw, settings.batch, dice);
    (void)add_contrast_gradient(pairs, word_factors, fold_in, settings.temperature, threads,
                                stepper.gradient);
    const double remaining = 1.0 - static_cast<double>(step) / settings.steps;
    stepper.step(words_of(pairs), static_cast<float>(settings.rate * remaining), word_factors);
    report(1.0);
  }
  const double mean_square_length =
      word_factors.cast<double>().squaredNorm() / static_cast<double>(word_factors.cols());
  word_factors /= static_cast<float>(std::sqrt(mean_square_length));
  lambda /= mean_square_length;
}

}  // namespace velmora::trainer
