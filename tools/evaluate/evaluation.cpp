#include "evaluation.hpp"

#include <algorithm>
#include <chrono>

#include "progress.hpp"

namespace {

using Clock = std::chrono::steady_clock;

/// Ranks one sentence up to the wanted label; `to_first` is the time up to the first group.
Outcome rank_sentence(const Contender& contender, const TestSentence& test,
                      Clock::duration& to_first) {
  Outcome outcome;
  outcome.sentence = test.sentence;
  outcome.wanted = test.label;
  outcome.low_overlap = test.low_overlap;
  int labels_above = 0;
  const Clock::time_point began = Clock::now();
  contender.rank(test.sentence, [&](const LabelGroup& group) {
    const auto& [score, labels] = group;
    if (labels_above == 0) {
      to_first = Clock::now() - began;
      outcome.best = labels.front();
      outcome.best_score = score;
    }
    labels_above += static_cast<int>(labels.size());
    if (std::find(labels.begin(), labels.end(), test.label) == labels.end()) {
      return true;
    }
    // Of equals the right one counts as the last: a tie is not a success.
    outcome.rank = labels_above;
    return false;
  });
  return outcome;
}

double best_score(const Contender& contender, const std::string& sentence) {
  double best = 0.0;
  contender.rank(sentence, [&](const LabelGroup& group) {
    best = group.first;
    return false;
  });
  return best;
}

}  // namespace

RuleSet make_rules(const Intents& training, int sentences_per_rule) {
  RuleSet rules;
  for (const auto& [label, sentences] : training) {
    const std::size_t size =
        sentences_per_rule == 0 ? sentences.size() : static_cast<std::size_t>(sentences_per_rule);
    for (std::size_t begin = 0; begin < sentences.size(); begin += size) {
      const std::size_t end = std::min(begin + size, sentences.size());
      const auto first = sentences.begin();
      rules[static_cast<int>(rules.size())] = {
          label, {first + static_cast<long>(begin), first + static_cast<long>(end)}};
    }
  }
  return rules;
}

IntentResult evaluate_intents(const Contender& contender, const std::vector<TestSentence>& tests,
                              const std::vector<std::string>& out_of_scope) {
  const std::size_t test_count = tests.size() + out_of_scope.size();
  Progress progress(contender.name);
  std::size_t done = 0;

  IntentResult result;
  std::vector<double> in_scope_scores;
  std::vector<double> right_scores;
  std::vector<double> other_scores;
  std::vector<Outcome> low_overlap;
  Clock::duration total{};
  for (const TestSentence& test : tests) {
    Clock::duration duration{};
    const Outcome outcome = rank_sentence(contender, test, duration);
    in_scope_scores.push_back(outcome.best_score);
    (outcome.rank == 1 ? right_scores : other_scores).push_back(outcome.best_score);
    if (outcome.low_overlap) {
      low_overlap.push_back(outcome);
    }
    result.outcomes.push_back(outcome);
    total += duration;
    progress.show(++done, test_count);
  }
  for (const std::string& sentence : out_of_scope) {
    result.out_of_scope_scores.push_back(best_score(contender, sentence));
    other_scores.push_back(result.out_of_scope_scores.back());
    progress.show(++done, test_count);
  }
  result.figures = ranking_figures(result.outcomes);
  result.low_overlap_figures = ranking_figures(low_overlap);
  result.area_under_roc = area_under_roc(in_scope_scores, result.out_of_scope_scores);
  result.threshold = best_threshold(right_scores, other_scores);
  result.milliseconds_per_sentence = std::chrono::duration<double, std::milli>(total).count() /
                                     static_cast<double>(result.outcomes.size());
  return result;
}

PairResult evaluate_pairs(const Contender& contender, const std::vector<ScoredPair>& pairs) {
  Progress progress(contender.name);
  std::vector<double> wanted;
  std::vector<double> measured;
  for (const ScoredPair& pair : pairs) {
    wanted.push_back(pair.score);
    measured.push_back(contender.similarity(pair.first, pair.second));
    progress.show(measured.size(), pairs.size());
  }
  return {pearson(wanted, measured), spearman(wanted, measured)};
}
