// Measures over expectations. Tested by tests/matcher/evaluation-test.cpp.
#include <algorithm>
#include <map>

#include <velmora/error.hpp>
#include <velmora/evaluation.hpp>

namespace velmora {

namespace {

// What came of one expectation.
struct Outcome {
  bool in_scope = false;
  bool is_right = false;
  double best_score = 0.0;
};

double share(std::size_t part, std::size_t whole) {
  return whole == 0 ? 0.0 : static_cast<double>(part) / static_cast<double>(whole);
}

void check_ids(const Matcher& matcher, const std::vector<Expectation>& expectations) {
  for (const Expectation& expectation : expectations) {
    if (expectation.id && matcher.find(*expectation.id) == nullptr) {
      const std::string line =
          expectation.line != 0 ? "line " + std::to_string(expectation.line) + ": " : "";
      throw Error(line + "rule " + std::to_string(*expectation.id) +
                  " is not among the rules: expected the id of a rule, or none");
    }
  }
}

// Rank and score of the expected rule; of rules with equal scores it counts as the last.
Failure place_of_expected(const Answer& answer, int id, std::size_t expectation) {
  const auto wanted = std::find_if(answer.matches.begin(), answer.matches.end(),
                                   [&](const Match& match) { return match.id == id; });
  const auto below = std::find_if(wanted, answer.matches.end(),
                                  [&](const Match& match) { return match.score < wanted->score; });
  Failure place;
  place.expectation = expectation;
  place.rank = static_cast<std::size_t>(below - answer.matches.begin());
  place.wanted_score = wanted->score;
  // With a tie for the first place another of the best came first, whatever the order of ids.
  const Match& first = answer.matches.front();
  place.got = first.id == id && place.rank > 1 ? answer.matches[1] : first;
  return place;
}

// Tries every score as the threshold, from below all of them upwards.
BestThreshold best_threshold(std::vector<Outcome> outcomes) {
  std::sort(outcomes.begin(), outcomes.end(),
            [](const Outcome& a, const Outcome& b) { return a.best_score < b.best_score; });
  const auto right = static_cast<std::size_t>(std::count_if(
      outcomes.begin(), outcomes.end(), [](const Outcome& outcome) { return outcome.is_right; }));
  const std::size_t other = outcomes.size() - right;
  std::size_t lost = 0;     // right answers below the threshold
  std::size_t stopped = 0;  // all others below it
  std::size_t most = 0;
  BestThreshold best;
  for (std::size_t i = 0; i <= outcomes.size(); ++i) {
    const bool between =
        i == 0 || i == outcomes.size() || outcomes[i - 1].best_score < outcomes[i].best_score;
    if (between && (i == 0 || right - lost + stopped > most)) {
      most = right - lost + stopped;
      best.keeps = right == 0 ? 1.0 : share(right - lost, right);
      best.lets_through = share(other - stopped, other);
      // Half way, so that sentences like these have room on both sides.
      if (outcomes.empty()) {
        best.score = 0.0;
      } else if (i == 0) {
        best.score = outcomes.front().best_score;
      } else if (i == outcomes.size()) {
        best.score = std::max(1.0, outcomes.back().best_score + 1.0);
      } else {
        best.score = 0.5 * (outcomes[i - 1].best_score + outcomes[i].best_score);
      }
    }
    if (i != outcomes.size()) {
      ++(outcomes[i].is_right ? lost : stopped);
    }
  }
  return best;
}

std::optional<double> area_under_roc(const std::vector<Outcome>& outcomes) {
  std::vector<double> inside, outside;
  for (const Outcome& outcome : outcomes) {
    (outcome.in_scope ? inside : outside).push_back(outcome.best_score);
  }
  if (inside.empty() || outside.empty()) {
    return std::nullopt;
  }
  std::sort(outside.begin(), outside.end());
  double below = 0.0;  // pairs in the right order; a tie is half a pair
  for (const double score : inside) {
    const auto [first, last] = std::equal_range(outside.begin(), outside.end(), score);
    below += static_cast<double>(first - outside.begin()) + 0.5 * static_cast<double>(last - first);
  }
  return below / (static_cast<double>(inside.size()) * static_cast<double>(outside.size()));
}

std::vector<Confusion> confusions_of(const std::vector<Expectation>& expectations,
                                     const std::vector<Failure>& failures) {
  std::map<std::pair<int, int>, std::size_t> counts;
  for (const Failure& failure : failures) {
    const std::optional<int> wanted = expectations[failure.expectation].id;
    if (wanted) {
      ++counts[{*wanted, failure.got.id}];
    }
  }
  std::vector<Confusion> confusions;
  confusions.reserve(counts.size());
  for (const auto& [ids, count] : counts) {
    confusions.push_back({ids.first, ids.second, count});
  }
  std::stable_sort(confusions.begin(), confusions.end(),
                   [](const Confusion& a, const Confusion& b) { return a.count > b.count; });
  return confusions;
}

}  // namespace

Evaluation evaluate(const Matcher& matcher, const std::vector<Expectation>& expectations,
                    unsigned threads) {
  check_ids(matcher, expectations);
  std::vector<std::string> sentences;
  sentences.reserve(expectations.size());
  for (const Expectation& expectation : expectations) {
    sentences.push_back(expectation.sentence);
  }
  MatchOptions all;
  all.top = matcher.rules().size();
  const std::vector<Answer> answers = matcher.match(sentences, all, threads);

  Evaluation evaluation;
  std::vector<Outcome> outcomes;
  std::size_t first = 0;
  std::size_t among_three = 0;
  double reciprocal_ranks = 0.0;
  for (std::size_t i = 0; i != expectations.size(); ++i) {
    Outcome& outcome = outcomes.emplace_back();
    outcome.best_score = answers[i].best() != nullptr ? answers[i].best()->score : 0.0;
    if (!expectations[i].id) {
      ++evaluation.out_of_scope;
      continue;
    }
    ++evaluation.in_scope;
    outcome.in_scope = true;
    const Failure place = place_of_expected(answers[i], *expectations[i].id, i);
    outcome.is_right = place.rank == 1;
    first += place.rank == 1 ? 1 : 0;
    among_three += place.rank <= 3 ? 1 : 0;
    reciprocal_ranks += 1.0 / static_cast<double>(place.rank);
    if (!outcome.is_right) {
      evaluation.failures.push_back(place);
    }
  }
  evaluation.first = share(first, evaluation.in_scope);
  evaluation.among_three = share(among_three, evaluation.in_scope);
  if (evaluation.in_scope != 0) {
    evaluation.mean_reciprocal_rank = reciprocal_ranks / static_cast<double>(evaluation.in_scope);
  }
  evaluation.threshold = best_threshold(outcomes);
  evaluation.area_under_roc = area_under_roc(outcomes);
  for (std::size_t i = 0; i != expectations.size(); ++i) {
    if (!expectations[i].id && answers[i].best() != nullptr &&
        answers[i].best()->score >= evaluation.threshold.score) {
      evaluation.failures.push_back({i, 0, 0.0, *answers[i].best()});
    }
  }
  std::sort(evaluation.failures.begin(), evaluation.failures.end(),
            [](const Failure& a, const Failure& b) { return a.expectation < b.expectation; });
  evaluation.confusions = confusions_of(expectations, evaluation.failures);
  return evaluation;
}

}  // namespace velmora
