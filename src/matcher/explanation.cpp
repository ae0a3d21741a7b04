// A score as a sum over pairs of words.
//
// Once it is known which sentences of the rule came closest, a score is linear in each view of the
// query: q.l + x.m + y.n, where the vectors l, m and n belong to the rule. The views of the query
// are sums over its words (the fold-in is linear in the weights of the words), and so are l, m and
// n over the words of the sentences that they are made of. Multiplied out, that is a sum over
// pairs. Tested by tests/matcher/explanation-test.cpp.
#include <algorithm>
#include <cmath>
#include <map>

#include <velmora/error.hpp>
#include <velmora/explanation.hpp>

#include "scoring.hpp"

namespace velmora {

namespace {

using detail::Feature;
using detail::SparseVector;

using Sums = std::map<int, double>;

// What the view of a sentence holds of one word; or what the score of a rule takes from the view of
// a query, as far as it comes from one word of the rule.
struct WordPart {
  Eigen::VectorXd latent;
  Sums words;
  Sums characters;
};

// By word.
using WordParts = std::map<std::string, WordPart>;

WordPart& part_of(WordParts& parts, const std::string& word, Eigen::Index dim) {
  WordPart& part = parts[word];
  if (part.latent.size() == 0) {
    part.latent = Eigen::VectorXd::Zero(dim);
  }
  return part;
}

void add(const Sums& part, double factor, Sums& sum) {
  for (const auto& [id, value] : part) {
    sum[id] += factor * value;
  }
}

void add(const SparseVector& vector, double factor, Sums& sum) {
  for (const Feature& feature : vector) {
    sum[feature.id] += factor * static_cast<double>(feature.value);
  }
}

double dot(const Sums& first, const Sums& second) {
  double sum = 0.0;
  for (const auto& [id, value] : first) {
    const auto entry = second.find(id);
    if (entry != second.end()) {
      sum += value * entry->second;
    }
  }
  return sum;
}

// What each stem adds to a latent vector of length 1, a column for each.
Eigen::MatrixXd scaled_latent_parts(const detail::ModelData& model,
                                    const std::vector<std::string>& stems) {
  const Eigen::MatrixXd parts = model.latent_parts(stems);
  const double length = parts.rowwise().sum().norm();
  if (length > 0.0 && std::isfinite(length)) {
    return parts / length;
  }
  return Eigen::MatrixXd::Zero(parts.rows(), parts.cols());
}

// The stems that the pieces of a typed word go to: those of the word by itself, as far as the
// sentence has them. A word without any, such as a Japanese particle, stands for itself.
std::vector<std::string> stems_of_word(const detail::ModelData& model, const std::string& word,
                                       const WordParts& parts) {
  std::vector<std::string> stems = model.stems(word);
  std::erase_if(stems, [&](const std::string& stem) { return !parts.contains(stem); });
  if (stems.empty()) {
    stems.push_back(word);
  }
  return stems;
}

// The views of a sentence by word.
WordParts take_apart(const detail::MatcherData& matcher, const detail::SentenceText& text,
                     const SparseVector& words, const SparseVector& characters) {
  const detail::ModelData& model = matcher.model.data();
  const Eigen::Index dim = model.factors.dim;
  WordParts parts;
  const Eigen::MatrixXd latent = scaled_latent_parts(model, text.stems);
  for (std::size_t i = 0; i != text.stems.size(); ++i) {
    WordPart& part = part_of(parts, text.stems[i], dim);
    part.latent = latent.col(static_cast<Eigen::Index>(i));
    const int id = matcher.views.word_id(text.stems[i]);
    const auto feature = std::find_if(words.begin(), words.end(),
                                      [&](const Feature& entry) { return entry.id == id; });
    if (feature != words.end()) {
      part.words[id] = static_cast<double>(feature->value);
    }
  }
  const std::vector<Sums> pieces = matcher.views.character_parts(text.words, characters);
  for (std::size_t i = 0; i != text.words.size(); ++i) {
    const std::vector<std::string> stems = stems_of_word(model, text.words[i], parts);
    for (const std::string& stem : stems) {
      add(pieces[i], 1.0 / static_cast<double>(stems.size()), part_of(parts, stem, dim).characters);
    }
  }
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
  const WordParts& parts() const { return parts_; }

 private:
  // What the kernel regression makes of a sentence.
  double kernel_weight(std::size_t sentence) const {
    return matcher_.uses_kernel()
               ? matcher_.kernel_weight * matcher_.kernel(static_cast<Eigen::Index>(sentence),
                                                          static_cast<Eigen::Index>(rule_))
               : 0.0;
  }

  void add_own_sentence(std::size_t j) {
    const ScoreOptions& options = matcher_.options;
    const double kernel = kernel_weight(j);
    const double latent = (j == nearest_.latent ? options.nearest : 0.0) +
                          options.centre * matcher_.latent_scale[rule_] +
                          kernel * detail::kKernelLatent;
    const double words = counting_ * matcher_.word_weight *
                             ((j == nearest_.words ? 1.0 : 0.0) + matcher_.word_scale[rule_]) +
                         kernel * detail::kKernelWords;
    const double characters =
        counting_ * matcher_.character_weight *
            ((j == nearest_.characters ? 1.0 : 0.0) + matcher_.character_scale[rule_]) +
        kernel * detail::kKernelCharacters;
    for (const auto& [word, part] :
         take_apart(matcher_, matcher_.texts[j], matcher_.sentences.words[j],
                    matcher_.sentences.characters[j])) {
      WordPart& sum = part_of(parts_, word, part.latent.size());
      sum.latent += latent * part.latent + options.ridge * (matcher_.ridge * part.latent);
      add(part.words, words, sum.words);
      add(part.characters, characters, sum.characters);
    }
  }

  void add_other_rules() {
    const detail::SentenceTable& sentences = matcher_.sentences;
    WordPart& sum = part_of(parts_, "", sentences.latent.rows());
    for (std::size_t j = 0; j != matcher_.sentence_count(); ++j) {
      if (matcher_.rule_of[j] != rule_) {
        const double kernel = kernel_weight(j);
        sum.latent +=
            kernel * detail::kKernelLatent * sentences.latent.col(static_cast<Eigen::Index>(j));
        add(sentences.words[j], kernel * detail::kKernelWords, sum.words);
        add(sentences.characters[j], kernel * detail::kKernelCharacters, sum.characters);
      }
    }
  }

  const detail::MatcherData& matcher_;
  std::size_t rule_;
  detail::Nearest nearest_;
  double counting_;
  WordParts parts_;
};

std::vector<WordPair> pairs_of(const WordParts& query, const WordParts& rule, double total_weight) {
  std::vector<WordPair> pairs;
  for (const auto& [query_word, of_query] : query) {
    for (const auto& [rule_word, of_rule] : rule) {
      WordPair pair;
      pair.query_word = query_word;
      pair.rule_word = rule_word;
      pair.latent = of_query.latent.dot(of_rule.latent) / total_weight;
      pair.words = dot(of_query.words, of_rule.words) / total_weight;
      pair.characters = dot(of_query.characters, of_rule.characters) / total_weight;
      if (pair.latent != 0.0 || pair.words != 0.0 || pair.characters != 0.0) {
        pairs.push_back(std::move(pair));
      }
    }
  }
  std::stable_sort(pairs.begin(), pairs.end(), [](const WordPair& a, const WordPair& b) {
    return std::abs(a.total()) > std::abs(b.total());
  });
  return pairs;
}

}  // namespace

Explanation Matcher::explain(std::string_view sentence, int id, const ActiveRules* active) const {
  const detail::RuleIndex& index = detail::active_index(data_, active);
  const std::size_t place = data_->place_of(id);
  const auto entry = std::find(index.places.begin(), index.places.end(), place);
  if (entry == index.places.end()) {
    throw Error("rule " + std::to_string(id) + " is not among the " +
                (active != nullptr ? "active rules" : "rules"));
  }
  const auto rule = static_cast<std::size_t>(entry - index.places.begin());
  const detail::Query query = detail::make_query(*data_, sentence);
  const detail::Scores scores(*data_, index, query);
  const detail::Nearest nearest = scores.nearest(rule);

  Explanation explanation;
  explanation.id = id;
  explanation.score = scores.score(rule);
  explanation.sentence = nearest.together - data_->first_sentence[place];
  explanation.unknown = query.unknown;
  const WordParts of_query = take_apart(*data_, query.text, query.words, query.characters);
  const RuleParts of_rule(*data_, place, nearest, scores.counting());
  explanation.pairs = pairs_of(of_query, of_rule.parts(), data_->total_weight);
  return explanation;
}

}  // namespace velmora
