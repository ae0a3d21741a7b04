// A score as a sum over pairs of words.
//
// Once it is known which sentences of the rule came closest, a score is linear in each view of the
// query: q.l + x.m + y.n, where the vectors l, m and n belong to the rule. The views of the query
// are sums over its words (the fold-in is linear in the weights of the words), and so are l, m and
// n over the words of the sentences that they are made of. Multiplied out, that is a sum over
// pairs. Tested by tests/matcher/explanation-test.cpp.
#include <velmora/explanation.hpp>

#include <algorithm>
#include <cmath>
#include <map>
#include <velmora/error.hpp>

#include "scoring.hpp"

namespace velmora {

namespace {

using detail::Feature;
using detail::SparseVector;

// What the score of a rule takes from a view of the query, as far as it comes from one word.
struct RulePart {
  Eigen::VectorXd latent;
  std::map<int, double> words;
  std::map<int, double> characters;
};

void add(const SparseVector& vector, double factor, std::map<int, double>& sum) {
  for (const Feature& feature : vector) {
    sum[feature.id] += factor * feature.value;
  }
}

double dot(const SparseVector& vector, const std::map<int, double>& other) {
  double sum = 0.0;
  for (const Feature& feature : vector) {
    const auto entry = other.find(feature.id);
    if (entry != other.end()) {
      sum += feature.value * entry->second;
    }
  }
  return sum;
}

// The views of a sentence by word.
struct WordParts {
  Eigen::MatrixXd latent;  // a column for each stem
  std::vector<SparseVector> words;
  std::vector<SparseVector> characters;
};

WordParts take_apart(const detail::MatcherData& matcher, const std::vector<std::string>& stems,
                     const SparseVector& words, const SparseVector& characters) {
  WordParts parts;
  parts.latent = matcher.model.data().latent_parts(stems);
  const double length = parts.latent.rowwise().sum().norm();
  if (length > 0.0) {
    parts.latent /= length;
  }
  for (const std::string& stem : stems) {
    const int id = matcher.views.word_id(stem);
    SparseVector& part = parts.words.emplace_back();
    for (const Feature& feature : words) {
      if (feature.id == id) {
        part.push_back(feature);
      }
    }
  }
  parts.characters = matcher.views.character_parts(stems, characters);
  return parts;
}

// Takes the score of one rule apart, sentence by sentence.
class RuleParts {
 public:
  RuleParts(const detail::MatcherData& matcher, std::size_t rule, const detail::Nearest& nearest,
            double counting)
      : matcher_(matcher), rule_(rule), nearest_(nearest), counting_(counting) {
    for (std::size_t j = matcher.first_sentence[rule]; j != matcher.first_sentence[rule + 1]; ++j) {
      add_own_sentence(j);
    }
    if (matcher.uses_kernel()) {
      add_other_rules();
    }
  }

  /// By word of the rule; "" for the sentences of the other rules.
  const std::map<std::string, RulePart>& parts() const { return parts_; }

 private:
  // What the kernel regression makes of a sentence.
  double kernel_weight(std::size_t sentence) const {
    return matcher_.uses_kernel()
               ? matcher_.options.kernel * matcher_.kernel(static_cast<Eigen::Index>(sentence),
                                                           static_cast<Eigen::Index>(rule_))
               : 0.0;
  }

  RulePart& part_of(const std::string& word) {
    RulePart& part = parts_[word];
    if (part.latent.size() == 0) {
      part.latent = Eigen::VectorXd::Zero(matcher_.latent.rows());
    }
    return part;
  }

  void add_own_sentence(std::size_t j) {
    const ScoreOptions& options = matcher_.options;
    const double kernel = kernel_weight(j);
    const auto share = [&](double weight, bool is_nearest, double scale) {
      return weight * ((is_nearest ? 1.0 : 0.0) + scale);
    };
    const double latent = (j == nearest_.latent ? options.nearest : 0.0) +
                          options.centre * matcher_.latent_scale[rule_] +
                          kernel * detail::kKernelLatent;
    const double words = share(counting_ * options.words, j == nearest_.words,
                               matcher_.word_scale[rule_]) +
                         kernel * detail::kKernelWords;
    const double characters = share(counting_ * options.characters, j == nearest_.characters,
                                    matcher_.character_scale[rule_]) +
                              kernel * detail::kKernelCharacters;
    const std::vector<std::string>& stems = matcher_.stems[j];
    const WordParts of = take_apart(matcher_, stems, matcher_.words[j], matcher_.characters[j]);
    for (std::size_t b = 0; b != stems.size(); ++b) {
      RulePart& part = part_of(stems[b]);
      const auto column = of.latent.col(static_cast<Eigen::Index>(b));
      part.latent += latent * column + options.ridge * (matcher_.ridge * column);
      add(of.words[b], words, part.words);
      add(of.characters[b], characters, part.characters);
    }
  }

  void add_other_rules() {
    RulePart& part = part_of("");
    for (std::size_t j = 0; j != matcher_.sentence_count(); ++j) {
      if (matcher_.rule_of[j] == rule_) {
        continue;
      }
      const double kernel = kernel_weight(j);
      part.latent +=
          kernel * detail::kKernelLatent * matcher_.latent.col(static_cast<Eigen::Index>(j));
      add(matcher_.words[j], kernel * detail::kKernelWords, part.words);
      add(matcher_.characters[j], kernel * detail::kKernelCharacters, part.characters);
    }
  }

  const detail::MatcherData& matcher_;
  std::size_t rule_;
  detail::Nearest nearest_;
  double counting_;
  std::map<std::string, RulePart> parts_;
};

}  // namespace

Explanation Matcher::explain(std::string_view sentence, int id, const ActiveRules* active) const {
  const std::vector<std::size_t> places = detail::active_places(data_, active);
  const std::size_t rule = data_->place_of(id);
  const auto place = std::find(places.begin(), places.end(), rule);
  if (place == places.end()) {
    throw Error("rule " + std::to_string(id) + " is not among the " +
                (active != nullptr ? "active rules" : "rules"));
  }
  const detail::Query query = detail::make_query(*data_, sentence);
  const detail::Scores scores(*data_, query, places);
  const detail::Nearest nearest = scores.nearest(rule);

  Explanation explanation;
  explanation.id = id;
  explanation.score = scores.values()[static_cast<std::size_t>(place - places.begin())];
  explanation.sentence = nearest.together - data_->first_sentence[rule];
  explanation.unknown = query.unknown;
  const WordParts of_query = take_apart(*data_, query.stems, query.words, query.characters);
  const RuleParts of_rule(*data_, rule, nearest, scores.counting());
  for (std::size_t a = 0; a != query.stems.size(); ++a) {
    for (const auto& [word, part] : of_rule.parts()) {
      WordPair pair;
      pair.query_word = query.stems[a];
      pair.rule_word = word;
      const auto column = of_query.latent.col(static_cast<Eigen::Index>(a));
      pair.latent = column.dot(part.latent) / data_->total_weight;
      pair.words = dot(of_query.words[a], part.words) / data_->total_weight;
      pair.characters = dot(of_query.characters[a], part.characters) / data_->total_weight;
      if (pair.latent != 0.0 || pair.words != 0.0 || pair.characters != 0.0) {
        explanation.pairs.push_back(std::move(pair));
      }
    }
  }
  std::stable_sort(explanation.pairs.begin(), explanation.pairs.end(),
                   [](const WordPair& a, const WordPair& b) {
                     return std::abs(a.total()) > std::abs(b.total());
                   });
  return explanation;
}

}  // namespace velmora
