#include "compilation.hpp"

#include <algorithm>
#include <cmath>

#include <velmora/error.hpp>

#include "regression.hpp"

namespace velmora::detail {

namespace {

std::vector<std::pair<int, std::size_t>> places_by_id(const std::vector<Rule>& rules) {
  std::vector<std::pair<int, std::size_t>> by_id;
  for (std::size_t place = 0; place != rules.size(); ++place) {
    by_id.emplace_back(rules[place].id, place);
    if (rules[place].sentences.empty()) {
      throw Error("rule " + std::to_string(rules[place].id) + " has no sentence: expected one");
    }
  }
  std::sort(by_id.begin(), by_id.end());
  const auto twice = std::adjacent_find(
      by_id.begin(), by_id.end(), [](const auto& a, const auto& b) { return a.first == b.first; });
  if (twice != by_id.end()) {
    throw Error("rule id " + std::to_string(twice->first) + " comes twice: expected each once");
  }
  return by_id;
}

// Every sentence is met twice: to be cut into words, and to be seen in the three views.
constexpr std::size_t kStepsOfSentence = 2;

std::vector<SentenceText> texts_of(const Model& model, const std::vector<Rule>& rules,
                                   const Progress& progress) {
  std::size_t sentence_count = 0;
  for (const Rule& rule : rules) {
    sentence_count += rule.sentences.size();
  }
  std::vector<SentenceText> texts;
  for (const Rule& rule : rules) {
    for (const std::string& sentence : rule.sentences) {
      texts.push_back(model.data().text(sentence));
      if (progress) {
        progress(texts.size(), kStepsOfSentence * sentence_count);
      }
    }
  }
  return texts;
}

double reciprocal(double length) {
  return length > 0.0 ? 1.0 / length : 0.0;
}

// The length of the sum of some sparse vectors.
double length_of_sum(const std::vector<SparseVector>& sentences, std::size_t first,
                     std::size_t last) {
  SparseVector all;
  for (std::size_t j = first; j != last; ++j) {
    all.insert(all.end(), sentences[j].begin(), sentences[j].end());
  }
  std::stable_sort(all.begin(), all.end(),
                   [](const Feature& a, const Feature& b) { return a.id < b.id; });
  double square = 0.0;
  for (std::size_t i = 0; i != all.size();) {
    double sum = 0.0;
    for (const int id = all[i].id; i != all.size() && all[i].id == id; ++i) {
      sum += static_cast<double>(all[i].value);
    }
    square += sum * sum;
  }
  return std::sqrt(square);
}

}  // namespace

MatcherData::MatcherData(Model of, std::vector<Rule> given, const ScoreOptions& how,
                         const Progress& progress)
    : model(std::move(of)),
      rules(std::move(given)),
      options(how),
      by_id(places_by_id(rules)),
      texts(texts_of(model, rules, progress)),
      views(model, texts) {
  for (std::size_t place = 0; place != rules.size(); ++place) {
    first_sentence.push_back(rule_of.size());
    rule_of.insert(rule_of.end(), rules[place].sentences.size(), place);
  }
  first_sentence.push_back(rule_of.size());
  see_sentences(progress);
  weigh();
  solve();
  std::vector<std::size_t> places;
  for (const auto& [id, place] : by_id) {
    places.push_back(place);
  }
  index.emplace(std::move(places), first_sentence, sentences, linear, views);
}

void MatcherData::see_sentences(const Progress& progress) {
  const std::size_t n = sentence_count();
  sentences.latent = model.data().latent_vectors(texts);
  for (std::size_t j = 0; j != n; ++j) {
    sentences.words.push_back(views.words(texts[j].stems));
    sentences.characters.push_back(views.characters(texts[j].words));
    if (progress) {
      progress(n + j + 1, kStepsOfSentence * n);
    }
  }
}

void MatcherData::weigh() {
  if (rules.empty()) {
    return;
  }
  constexpr std::size_t kMostCoefficients = 1'000'000;
  const double sentences_a_rule =
      static_cast<double>(sentence_count()) / static_cast<double>(rules.size());
  if (sentence_count() <= options.kernel_sentences &&
      sentence_count() * rules.size() <= kMostCoefficients) {
    kernel_weight = options.kernel * log_of(sentences_a_rule) / log_of(10.0);
  }
  word_weight = options.words / sentences_a_rule;
  character_weight = options.characters / sentences_a_rule;
  total_weight = options.nearest + options.centre + options.ridge + kernel_weight +
                 2.0 * (word_weight + character_weight);
}

void MatcherData::solve() {
  const Eigen::MatrixXd& latent = sentences.latent;
  const auto rule_count = static_cast<Eigen::Index>(rules.size());
  Eigen::MatrixXd sums = Eigen::MatrixXd::Zero(latent.rows(), rule_count);
  for (std::size_t j = 0; j != sentence_count(); ++j) {
    sums.col(static_cast<Eigen::Index>(rule_of[j])) += latent.col(static_cast<Eigen::Index>(j));
  }
  for (std::size_t r = 0; r != rules.size(); ++r) {
    const std::size_t first = first_sentence[r];
    const std::size_t last = first_sentence[r + 1];
    latent_scale.push_back(reciprocal(sums.col(static_cast<Eigen::Index>(r)).norm()));
    word_scale.push_back(reciprocal(length_of_sum(sentences.words, first, last)));
    character_scale.push_back(reciprocal(length_of_sum(sentences.characters, first, last)));
  }

  ridge = ridge_inverse(latent);
  linear = options.ridge * (ridge * sums);
  for (Eigen::Index r = 0; r != rule_count; ++r) {
    linear.col(r) += options.centre * latent_scale[static_cast<std::size_t>(r)] * sums.col(r);
  }
  if (kernel_weight != 0.0) {
    kernel = kernel_columns(sentences, rule_of, rules.size());
    linear += kernel_weight * kKernelLatent * (latent * kernel);
  }
  const Eigen::VectorXd lengths = linear.colwise().norm();
  linear_length.assign(lengths.begin(), lengths.end());
}

std::size_t MatcherData::place_of(int id) const {
  const auto entry =
      std::lower_bound(by_id.begin(), by_id.end(), std::make_pair(id, std::size_t{0}));
  return entry != by_id.end() && entry->first == id ? entry->second : rules.size();
}

}  // namespace velmora::detail
