// Runs a contender over test data; see evaluation.hpp.
#include "evaluation.hpp"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iostream>

namespace {

using Clock = std::chrono::steady_clock;

/// A line on standard error that counts up, when somebody watches.
class Progress {
 public:
  Progress(std::string what, std::size_t total) : what_(std::move(what)), total_(total) {}
  ~Progress() {
    if (shown_) {
      std::cerr << "\r\033[K" << std::flush;
    }
  }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void step() {
    ++done_;
    if (!watched_ || Clock::now() - last_ < std::chrono::milliseconds(200)) {
      return;
    }
    last_ = Clock::now();
    shown_ = true;
    std::cerr << "\r" << what_ << ": " << done_ << " of " << total_ << std::flush;
  }

 private:
  std::string what_;
  std::size_t total_;
  std::size_t done_ = 0;
  bool watched_ = isatty(STDERR_FILENO) != 0;
  bool shown_ = false;
  Clock::time_point last_ = Clock::now();
};

/// Ranks one sentence up to the wanted label; `to_first` is the time up to the first group.
Outcome rank_sentence(const Contender& contender, const std::string& sentence,
                      const std::string& wanted, Clock::duration& to_first) {
  Outcome outcome;
  outcome.wanted = wanted;
  int labels_above = 0;
  const Clock::time_point began = Clock::now();
  contender.rank(sentence, [&](const LabelGroup& group) {
    const auto& [score, labels] = group;
    if (labels_above == 0) {
      to_first = Clock::now() - began;
      outcome.best = labels.front();
      outcome.best_score = score;
    }
    labels_above += static_cast<int>(labels.size());
    if (std::find(labels.begin(), labels.end(), wanted) == labels.end()) {
      return true;
    }
    // Of equals the right one counts as the last: a tie is no merit.
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

IntentResult evaluate_intents(const Contender& contender, const Intents& tests,
                              const std::vector<std::string>& out_of_scope) {
  std::size_t test_count = out_of_scope.size();
  for (const auto& [label, sentences] : tests) {
    test_count += sentences.size();
  }
  Progress progress(contender.name, test_count);

  IntentResult result;
  std::vector<double> in_scope_scores;
  Clock::duration total{};
  for (const auto& [label, sentences] : tests) {
    for (const std::string& sentence : sentences) {
      Clock::duration duration{};
      result.outcomes.push_back(rank_sentence(contender, sentence, label, duration));
      in_scope_scores.push_back(result.outcomes.back().best_score);
      total += duration;
      progress.step();
    }
  }
  for (const std::string& sentence : out_of_scope) {
    result.out_of_scope_scores.push_back(best_score(contender, sentence));
    progress.step();
  }
  result.figures = ranking_figures(result.outcomes);
  result.area_under_roc = area_under_roc(in_scope_scores, result.out_of_scope_scores);
  result.milliseconds_per_sentence = std::chrono::duration<double, std::milli>(total).count() /
                                     static_cast<double>(result.outcomes.size());
  return result;
}

PairResult evaluate_pairs(const Contender& contender, const std::vector<ScoredPair>& pairs) {
  Progress progress(contender.name, pairs.size());
  std::vector<double> wanted;
  std::vector<double> measured;
  for (const ScoredPair& pair : pairs) {
    wanted.push_back(pair.score);
    measured.push_back(contender.similarity(pair.first, pair.second));
    progress.step();
  }
  return {pearson(wanted, measured), spearman(wanted, measured)};
}
