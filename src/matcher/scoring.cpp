#include "scoring.hpp"

#include <algorithm>
#include <velmora/error.hpp>

namespace velmora::detail {

namespace {

template <typename Similarities>
std::size_t place_of_highest(const Similarities& similarities, std::size_t first,
                             std::size_t last) {
  std::size_t best = first;
  for (std::size_t j = first + 1; j < last; ++j) {
    if (similarities[static_cast<Eigen::Index>(j)] >
        similarities[static_cast<Eigen::Index>(best)]) {
      best = j;
    }
  }
  return best;
}

// A vector of dot products by sentence, looked at with the index type of Eigen.
Eigen::Map<const Eigen::VectorXd> as_vector(const std::vector<double>& values) {
  return {values.data(), static_cast<Eigen::Index>(values.size())};
}

}  // namespace

std::vector<std::size_t> active_places(const std::shared_ptr<const MatcherData>& matcher,
                                       const ActiveRules* active) {
  if (active != nullptr) {
    if (active->data().owner != matcher) {
      throw Error("active rules of another matcher: expected those of this one");
    }
    return active->data().places;
  }
  std::vector<std::size_t> places;
  for (const auto& [id, place] : matcher->by_id) {
    places.push_back(place);
  }
  return places;
}

Query make_query(const MatcherData& matcher, std::string_view sentence) {
  Query query;
  query.stems = matcher.model.stems(sentence);
  for (const std::string& stem : query.stems) {
    if (matcher.views.word_id(stem) < 0) {
      query.unknown.push_back(stem);
    }
  }
  query.latent = matcher.model.data().latent_vector(query.stems);
  query.words = matcher.views.words(query.stems);
  query.characters = matcher.views.characters(query.stems);
  return query;
}

Scores::Scores(const MatcherData& matcher, const Query& query,
               const std::vector<std::size_t>& places)
    : matcher_(matcher), words_(matcher.sentence_count()), characters_(matcher.sentence_count()) {
  const ScoreOptions& options = matcher.options;
  latent_ = matcher.latent.transpose() * query.latent;
  const Eigen::VectorXd linear = matcher.linear.transpose() * query.latent;
  // The kernel regression looks at the sentences of all rules, active or not.
  for (std::size_t j = 0; j != matcher.sentence_count(); ++j) {
    words_[j] = dot(query.words, matcher.words[j]);
    characters_[j] = dot(query.characters, matcher.characters[j]);
  }
  double most_shared = 0.0;
  std::vector<double> counted;
  for (const std::size_t rule : places) {
    const std::size_t first = matcher.first_sentence[rule];
    const std::size_t last = matcher.first_sentence[rule + 1];
    double word_sum = 0.0;
    double character_sum = 0.0;
    for (std::size_t j = first; j != last; ++j) {
      word_sum += words_[j];
      character_sum += characters_[j];
    }
    const double nearest_words = words_[place_of_highest(as_vector(words_), first, last)];
    const double nearest_characters =
        characters_[place_of_highest(as_vector(characters_), first, last)];
    most_shared = std::max(most_shared, nearest_words);
    counted.push_back(
        options.words * (nearest_words + word_sum * matcher.word_scale[rule]) +
        options.characters * (nearest_characters + character_sum * matcher.character_scale[rule]));
  }
  counting_ = options.shared_words > 0.0 ? std::min(1.0, most_shared / options.shared_words) : 1.0;

  Eigen::VectorXd kernel = Eigen::VectorXd::Zero(static_cast<Eigen::Index>(matcher.rules.size()));
  if (matcher.uses_kernel()) {
    kernel = matcher.kernel.transpose() * (kKernelWords * as_vector(words_) +
                                           kKernelCharacters * as_vector(characters_));
  }
  for (std::size_t i = 0; i != places.size(); ++i) {
    const std::size_t rule = places[i];
    const std::size_t best = place_of_highest(latent_, matcher.first_sentence[rule],
                                              matcher.first_sentence[rule + 1]);
    const auto r = static_cast<Eigen::Index>(rule);
    const double sum = options.nearest * latent_(static_cast<Eigen::Index>(best)) + linear(r) +
                       options.kernel * kernel(r) + counting_ * counted[i];
    values_.push_back(sum / matcher.total_weight);
  }
}

Nearest Scores::nearest(std::size_t rule) const {
  const std::size_t first = matcher_.first_sentence[rule];
  const std::size_t last = matcher_.first_sentence[rule + 1];
  const ScoreOptions& options = matcher_.options;
  const Eigen::VectorXd together =
      options.nearest * latent_ + counting_ * (options.words * as_vector(words_) +
                                               options.characters * as_vector(characters_));
  return {place_of_highest(latent_, first, last), place_of_highest(as_vector(words_), first, last),
          place_of_highest(as_vector(characters_), first, last),
          place_of_highest(together, first, last)};
}

}  // namespace velmora::detail
