// Models of the second front door. Tested by tests/matcher/model-test.cpp.
#include <algorithm>
#include <array>
#include <cmath>
#include <system_error>

#include <velmora/error.hpp>
#include <velmora/model.hpp>
#include <zu/path.hpp>

#include "../text/stem-set.hpp"
#include "model-data.hpp"
#include "model-loading.hpp"

namespace velmora {

namespace {

constexpr std::array<const char*, 3> kLanguages = {"enu", "frf", "jpj"};

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : ", ") + word;
  }
  return text.empty() ? "none" : text;
}

std::filesystem::path installed_directory(const std::string& language) {
  return zu::path::findData("dialog", "velmora/data/" + language + "/model/");
}

bool is_folder(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

Eigen::VectorXd scaled(Eigen::VectorXd vector) {
  const double norm = vector.norm();
  if (norm > 0.0 && std::isfinite(norm)) {
    return vector / norm;
  }
  return Eigen::VectorXd::Zero(vector.size());  // no direction, or factors that are out of bounds
}

}  // namespace

namespace detail {

std::unique_ptr<VX::Dialog::Stemmer> StemmerPool::take() const {
  {
    const std::lock_guard lock(mutex_);
    if (!idle_.empty()) {
      std::unique_ptr<VX::Dialog::Stemmer> stemmer = std::move(idle_.back());
      idle_.pop_back();
      return stemmer;
    }
  }
  return std::make_unique<VX::Dialog::Stemmer>(language_);
}

void StemmerPool::give_back(std::unique_ptr<VX::Dialog::Stemmer> stemmer) const noexcept {
  const std::lock_guard lock(mutex_);
  if (idle_.size() < kMostIdle) {
    idle_.push_back(std::move(stemmer));
  }
}

namespace {

using VX::Dialog::detail::Term;

// Terms of the known stems by ascending word id, and the place of each among the stems.
struct KnownTerms {
  std::vector<Term> terms;
  std::vector<std::size_t> places;
};

KnownTerms known_terms(const ModelData& model, const std::vector<std::string>& stems) {
  std::vector<std::pair<int, std::size_t>> known;
  for (std::size_t place = 0; place != stems.size(); ++place) {
    const auto word = model.vocabulary.find(stems[place]);
    if (word != model.vocabulary.end()) {
      known.emplace_back(word->second, place);
    }
  }
  std::sort(known.begin(), known.end());
  KnownTerms found;
  for (const auto& [word_id, place] : known) {
    found.terms.push_back({word_id, 1.0, model.idf[static_cast<std::size_t>(word_id)]});
    found.places.push_back(place);
  }
  return found;
}

}  // namespace
}  // namespace detail

std::vector<std::string> detail::ModelData::stems(const std::string& sentence) const {
  return stemmers.with_stemmer([&](VX::Dialog::Stemmer& stemmer) {
    return VX::Dialog::detail::stem_set(stemmer, sentence);
  });
}

detail::SentenceText detail::ModelData::text(const std::string& sentence) const {
  SentenceText text;
  text.stems = stems(sentence);
  splitters.with_stemmer(
      [&](VX::Dialog::Stemmer& splitter) { splitter.stem_sentence(sentence, text.words); });
  return text;
}

Eigen::MatrixXd detail::ModelData::latent_parts(const std::vector<std::string>& stems) const {
  const detail::KnownTerms known = detail::known_terms(*this, stems);
  Eigen::MatrixXd parts =
      Eigen::MatrixXd::Zero(factors.dim, static_cast<Eigen::Index>(stems.size()));
  if (known.terms.empty()) {
    return parts;
  }
  const Eigen::MatrixXd columns =
      VX::Dialog::detail::fold_in_columns(known.terms, factors, word_gram, gram_inverse);
  for (std::size_t i = 0; i != known.terms.size(); ++i) {
    parts.col(static_cast<Eigen::Index>(known.places[i])) =
        columns.col(static_cast<Eigen::Index>(i)) * known.terms[i].value;
  }
  return parts;
}

Eigen::VectorXd detail::ModelData::latent_vector(const std::vector<std::string>& stems) const {
  const detail::KnownTerms known = detail::known_terms(*this, stems);
  if (known.terms.empty()) {
    return Eigen::VectorXd::Zero(factors.dim);
  }
  return scaled(VX::Dialog::detail::fold_in_terms(known.terms, factors, word_gram, gram_inverse));
}

Eigen::MatrixXd detail::ModelData::latent_vectors(
    const std::vector<SentenceText>& sentences) const {
  std::vector<std::vector<VX::Dialog::detail::Term>> terms;
  std::vector<int> word_ids;
  for (const SentenceText& sentence : sentences) {
    terms.push_back(detail::known_terms(*this, sentence.stems).terms);
    for (const VX::Dialog::detail::Term& term : terms.back()) {
      word_ids.push_back(term.word_id);
    }
  }
  const VX::Dialog::detail::FoldedWords words(std::move(word_ids), factors, gram_inverse);
  Eigen::MatrixXd vectors =
      Eigen::MatrixXd::Zero(factors.dim, static_cast<Eigen::Index>(sentences.size()));
  for (std::size_t j = 0; j != sentences.size(); ++j) {
    if (!terms[j].empty()) {
      vectors.col(static_cast<Eigen::Index>(j)) = scaled(
          VX::Dialog::detail::fold_in_terms(terms[j], factors, word_gram, gram_inverse, &words));
    }
  }
  return vectors;
}

Model Model::load(const std::filesystem::path& directory, const std::string& language) {
  if (std::find(kLanguages.begin(), kLanguages.end(), language) == kLanguages.end()) {
    throw Error("unknown language '" + language + "': expected one of " +
                joined(known_languages()) + "; installed: " + joined(installed_languages()));
  }
  auto data = std::make_shared<detail::ModelData>(language);
  data->directory = directory;
  detail::load_tables(*data);
  return Model(std::move(data));
}

Model Model::installed(const std::string& language) {
  const std::filesystem::path directory = installed_directory(language);
  const std::vector<std::string> known = known_languages();
  const bool is_known = std::find(known.begin(), known.end(), language) != known.end();
  if (is_known && !is_folder(directory)) {
    throw Error("no model for language '" + language + "' is installed: expected one in " +
                directory.string() + "; installed: " + joined(installed_languages()));
  }
  return load(directory, language);
}

std::vector<std::string> Model::installed_languages() {
  std::vector<std::string> found = known_languages();
  found.erase(std::remove_if(found.begin(), found.end(),
                             [](const std::string& language) {
                               return !is_folder(installed_directory(language));
                             }),
              found.end());
  return found;
}

std::vector<std::string> Model::known_languages() {
  return {kLanguages.begin(), kLanguages.end()};
}

const std::string& Model::language() const noexcept {
  return data_->language;
}

const std::filesystem::path& Model::directory() const noexcept {
  return data_->directory;
}

std::size_t Model::dimension() const noexcept {
  return static_cast<std::size_t>(data_->factors.dim);
}

std::size_t Model::vocabulary_size() const noexcept {
  return data_->vocabulary.size();
}

std::vector<std::string> Model::stems(std::string_view sentence) const {
  return data_->stems(std::string(sentence));
}

bool Model::knows(std::string_view stem) const {
  return data_->vocabulary.find(stem) != data_->vocabulary.end();
}

std::vector<double> Model::vector(std::string_view sentence) const {
  const Eigen::VectorXd vector = data_->latent_vector(stems(sentence));
  return {vector.begin(), vector.end()};
}

}  // namespace velmora
