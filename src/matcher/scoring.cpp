#include "scoring.hpp"

#include <algorithm>
#include <functional>
#include <span>

#include <velmora/error.hpp>

namespace velmora::detail {

namespace {

Eigen::Index at(std::size_t place) {
  return static_cast<Eigen::Index>(place);
}

bool is_better(const RuleScore& a, const RuleScore& b) {
  return a.score != b.score ? a.score > b.score : a.rule < b.rule;
}

}  // namespace

Query make_query(const MatcherData& matcher, std::string_view sentence) {
  Query query;
  query.text = matcher.model.data().text(std::string(sentence));
  for (const std::string& stem : query.text.stems) {
    if (matcher.views.word_id(stem) < 0) {
      query.unknown.push_back(stem);
    }
  }
  query.unknown_share = matcher.views.unknown_share(query.text.stems);
  query.latent = matcher.model.data().latent_vector(query.text.stems);
  query.words = matcher.views.words(query.text.stems);
  query.characters = matcher.views.characters(query.text.words);
  return query;
}

const RuleIndex& active_index(const std::shared_ptr<const MatcherData>& matcher,
                              const ActiveRules* active) {
  if (active == nullptr) {
    return *matcher->index;
  }
  if (active->data().owner != matcher) {
    throw Error("active rules of another matcher: expected those of this one");
  }
  return active->data().index;
}

Scores::Scores(const MatcherData& matcher, const RuleIndex& index, const Query& query)
    : matcher_(matcher),
      index_(index),
      query_(query),
      words_(index.words.dots(query.words)),
      characters_(index.characters.dots(query.characters)) {
  add_counting_parts();
  if (matcher.uses_kernel()) {
    add_kernel();
  }
}

Scores::Range Scores::sentences_of(std::size_t rule) const {
  return {index_.first[rule], index_.first[rule + 1]};
}

void Scores::add_counting_parts() {
  const ScoreOptions& options = matcher_.options;
  others_.reserve(index_.places.size());
  double most_shared = 0.0;
  for (std::size_t rule = 0; rule != index_.places.size(); ++rule) {
    const auto [first, last] = sentences_of(rule);
    double nearest_words = words_[first];
    double nearest_characters = characters_[first];
    double all_words = 0.0;
    double all_characters = 0.0;
    for (std::size_t s = first; s != last; ++s) {
      nearest_words = std::max(nearest_words, words_[s]);
      nearest_characters = std::max(nearest_characters, characters_[s]);
      all_words += words_[s];
      all_characters += characters_[s];
    }
    const std::size_t place = index_.places[rule];
    most_shared = std::max(most_shared, nearest_words);
    others_.push_back(matcher_.word_weight *
                          (nearest_words + all_words * matcher_.word_scale[place]) +
                      matcher_.character_weight *
                          (nearest_characters + all_characters * matcher_.character_scale[place]));
  }
  if (options.shared_words > 0.0) {
    const double shared = query_.unknown_share + most_shared / options.shared_words;
    counting_ = std::min(1.0, shared * shared);
  }
  for (double& part : others_) {
    part *= counting_;
  }
}

void Scores::add_kernel() {
  // The regression looks at the sentences of all rules, active or not; the latent part of it is in
  // the linear part.
  const RuleIndex& all = *matcher_.index;
  const bool is_all = &index_ == &all;
  const std::vector<double> words = is_all ? words_ : all.words.dots(query_.words);
  const std::vector<double> characters =
      is_all ? characters_ : all.characters.dots(query_.characters);
  Eigen::VectorXd similarities(at(all.sentences.size()));
  for (std::size_t s = 0; s != all.sentences.size(); ++s) {
    similarities(at(all.sentences[s])) =
        kKernelWords * words[s] + kKernelCharacters * characters[s];
  }
  for (std::size_t rule = 0; rule != others_.size(); ++rule) {
    const auto column = matcher_.kernel.col(at(index_.places[rule]));
    others_[rule] += matcher_.kernel_weight * column.dot(similarities);
  }
}

double Scores::latent_dot(std::size_t sentence) const {
  return matcher_.sentences.latent.col(at(index_.sentences[sentence])).dot(query_.latent);
}

double Scores::score(std::size_t rule) const {
  const auto [first, last] = sentences_of(rule);
  double nearest = latent_dot(first);
  for (std::size_t s = first + 1; s != last; ++s) {
    nearest = std::max(nearest, latent_dot(s));
  }
  const double linear = matcher_.linear.col(at(index_.places[rule])).dot(query_.latent);
  return scaled(matcher_.options.nearest * nearest + linear + others_[rule]);
}

std::vector<Scores::Bounds> Scores::bounds() const {
  std::vector<Bounds> bounds(others_.size());
  const std::span<const double> latent(query_.latent.data(),
                                       static_cast<std::size_t>(query_.latent.size()));
  using VX::Dialog::detail::RowIndex;
  const auto coarse = index_.latent.coarse(latent);
  std::vector<int> dots(index_.rows.size());
  if (coarse) {
    index_.latent.dots(*coarse, index_.rows, dots);
  }
  const double nearest_weight = matcher_.options.nearest;
  for (std::size_t rule = 0; rule != bounds.size(); ++rule) {
    Bounds& bound = bounds[rule];
    bound = {others_[rule], others_[rule]};
    if (coarse) {  // otherwise the query has no known word, and its dot products are 0
      const auto add = [&](double weight, int dot) {
        const double end = weight * RowIndex::lower(dot, *coarse);
        const double other_end = weight * RowIndex::upper(dot, *coarse);
        bound.lower += std::min(end, other_end);
        bound.upper += std::max(end, other_end);
      };
      const auto [first, last] = sentences_of(rule);
      int nearest = dots[first];
      for (std::size_t s = first + 1; s != last; ++s) {
        nearest = std::max(nearest, dots[s]);
      }
      add(nearest_weight, nearest);
      add(matcher_.linear_length[index_.places[rule]], dots[index_.sentences.size() + rule]);
    }
    bound = {scaled(bound.lower), scaled(bound.upper)};
  }
  return bounds;
}

std::vector<RuleScore> Scores::best(std::size_t count) const {
  count = std::min(count, others_.size());
  std::vector<RuleScore> candidates;
  if (count == 0) {
    return candidates;
  }
  const std::vector<Bounds> all = bounds();
  std::vector<double> lower;
  lower.reserve(all.size());
  for (const Bounds& bound : all) {
    lower.push_back(bound.lower);
  }
  const auto last_of_best = lower.begin() + at(count - 1);
  std::nth_element(lower.begin(), last_of_best, lower.end(), std::greater<>());
  // Rounding moves a score by far less than this.
  constexpr double kSlack = 1e-9;
  for (std::size_t rule = 0; rule != all.size(); ++rule) {
    if (all[rule].upper + kSlack >= *last_of_best) {
      candidates.push_back({rule, score(rule)});
    }
  }
  std::partial_sort(candidates.begin(), candidates.begin() + at(count), candidates.end(),
                    is_better);
  candidates.resize(count);
  return candidates;
}

Nearest Scores::nearest(std::size_t rule) const {
  const ScoreOptions& options = matcher_.options;
  const Range range = sentences_of(rule);
  const std::size_t first = range.first;
  const std::size_t last = range.last;
  std::vector<double> latent;
  std::vector<double> together;
  for (std::size_t s = first; s != last; ++s) {
    latent.push_back(latent_dot(s));
    together.push_back(options.nearest * latent.back() +
                       counting_ * (matcher_.word_weight * words_[s] +
                                    matcher_.character_weight * characters_[s]));
  }
  const auto sentence_of_highest = [&](auto from, auto to) {
    return index_.sentences[first + static_cast<std::size_t>(std::max_element(from, to) - from)];
  };
  return {sentence_of_highest(latent.begin(), latent.end()),
          sentence_of_highest(words_.begin() + at(first), words_.begin() + at(last)),
          sentence_of_highest(characters_.begin() + at(first), characters_.begin() + at(last)),
          sentence_of_highest(together.begin(), together.end())};
}

}  // namespace velmora::detail
