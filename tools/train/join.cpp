#include "join.hpp"

#include <cmath>
#include <fstream>
#include <iterator>
#include <string>

#include <velmora/wordsense-model.hpp>
#include <zu/log.hpp>

#include "../../src/support/model-files.hpp"
#include "failure.hpp"
#include "output-directory.hpp"
#include "output-file.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;
namespace files = VX::Dialog::detail;

namespace {

std::string content_of(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw Failure(path.string() + ": cannot be opened");
  }
  return {std::istreambuf_iterator<char>(file), {}};
}

// The word tables of the first model; the others must have the same.
void copy_word_tables(const std::vector<JoinedModel>& models, const fs::path& directory) {
  for (const char* name : {files::kDictionaryFile, files::kIdfFile}) {
    const std::string content = content_of(models.front().directory / name);
    for (const JoinedModel& model : models) {
      if (content_of(model.directory / name) != content) {
        throw Failure((model.directory / name).string() + ": differs from that of " +
                      models.front().directory.string() + "; joined models need the same words");
      }
    }
    OutputFile file(directory / name);
    file.write(content);
    file.close();
  }
}

Eigen::MatrixXd factors_of(const fs::path& directory) {
  wordsense_model model;
  const bool opened =
      VX::Dialog::read_wordsense_model((directory / files::kModelFile).string(), model);
  if (!opened || model.word_factors.size() == 0 || !model.word_factors.allFinite()) {
    throw Failure(directory.string() + ": holds no usable model");
  }
  return model.word_factors;
}

}  // namespace

Eigen::MatrixXf join_factors(const std::vector<Eigen::MatrixXd>& factors,
                             const std::vector<double>& weights) {
  Eigen::Index dim = 0;
  for (const Eigen::MatrixXd& part : factors) {
    dim += part.rows();
  }
  Eigen::MatrixXf joined(dim, factors.front().cols());
  Eigen::Index first = 0;
  for (std::size_t k = 0; k != factors.size(); ++k) {
    const Eigen::MatrixXd& part = factors[k];
    if (part.cols() != joined.cols() || part.isZero(0.0)) {
      throw Failure("joined models need factors for the same words, and not all of them 0");
    }
    const double length = std::sqrt(part.squaredNorm() / static_cast<double>(part.cols()));
    joined.middleRows(first, part.rows()) = (part * (weights[k] / length)).cast<float>();
    first += part.rows();
  }
  return joined;
}

void join_models(const TrainingSettings& settings) {
  zu::log::setLevel(zu::log::Level::warning);
  OutputDirectory output(settings.output, settings.force);
  copy_word_tables(settings.join, output.path());
  std::vector<Eigen::MatrixXd> factors;
  std::vector<double> weights;
  for (const JoinedModel& model : settings.join) {
    factors.push_back(factors_of(model.directory));
    weights.push_back(model.weight);
  }
  ModelSettings form = settings.model;
  form.row_scaling = 0.0;  // each model has its lengths already
  write_model(scale_factors(join_factors(factors, weights), form), form, output.path());
  output.publish();
}

}  // namespace velmora::trainer
