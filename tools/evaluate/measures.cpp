#include "measures.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

double mean(const std::vector<double>& values) {
  return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

/// The rank of each value, from 1; equal values share the mean of theirs.
std::vector<double> ranks(const std::vector<double>& values) {
  std::vector<std::size_t> order(values.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [&](std::size_t left, std::size_t right) { return values[left] < values[right]; });
  std::vector<double> result(values.size());
  for (std::size_t begin = 0; begin != order.size();) {
    std::size_t end = begin;
    while (end != order.size() && values[order[end]] == values[order[begin]]) {
      ++end;
    }
    const double shared = static_cast<double>(begin + 1 + end) / 2;
    for (std::size_t place = begin; place != end; ++place) {
      result[order[place]] = shared;
    }
    begin = end;
  }
  return result;
}

}  // namespace

RankingFigures ranking_figures(const std::vector<Outcome>& outcomes) {
  RankingFigures figures;
  if (outcomes.empty()) {
    return figures;
  }
  for (const Outcome& outcome : outcomes) {
    if (outcome.rank == 0) {
      continue;
    }
    if (outcome.rank == 1) {
      figures.top1 += 1;
    }
    if (outcome.rank <= 3) {
      figures.top3 += 1;
    }
    figures.mean_reciprocal_rank += 1.0 / outcome.rank;
  }
  const double count = static_cast<double>(outcomes.size());
  figures.top1 /= count;
  figures.top3 /= count;
  figures.mean_reciprocal_rank /= count;
  return figures;
}

std::vector<Confusion> worst_confusions(const std::vector<Outcome>& outcomes, std::size_t limit) {
  std::map<std::pair<std::string, std::string>, int> counts;
  for (const Outcome& outcome : outcomes) {
    if (outcome.best != outcome.wanted) {
      ++counts[{outcome.wanted, outcome.best}];
    }
  }
  std::vector<Confusion> confusions;
  confusions.reserve(counts.size());
  for (const auto& [labels, count] : counts) {
    confusions.push_back({labels.first, labels.second, count});
  }
  std::stable_sort(
      confusions.begin(), confusions.end(),
      [](const Confusion& left, const Confusion& right) { return left.count > right.count; });
  if (confusions.size() > limit) {
    confusions.resize(limit);
  }
  return confusions;
}

BestThreshold best_threshold(std::vector<double> right, std::vector<double> other) {
  std::sort(right.begin(), right.end());
  std::sort(other.begin(), other.end());
  const auto share_from = [](const std::vector<double>& sorted, double score, double of_none) {
    const auto first = std::lower_bound(sorted.begin(), sorted.end(), score);
    return sorted.empty()
               ? of_none
               : static_cast<double>(sorted.end() - first) / static_cast<double>(sorted.size());
  };
  BestThreshold best;
  double most_right = -std::numeric_limits<double>::infinity();
  for (const double score : right) {
    const double kept = share_from(right, score, 1.0);
    const double let_through = share_from(other, score, 0.0);
    const double count =
        kept * static_cast<double>(right.size()) - let_through * static_cast<double>(other.size());
    if (count > most_right) {
      most_right = count;
      best = {score, kept, let_through};
    }
  }
  return best;
}

double area_under_roc(const std::vector<double>& positive, const std::vector<double>& negative) {
  if (positive.empty() || negative.empty()) {
    return 0.5;
  }
  std::vector<double> all = positive;
  all.insert(all.end(), negative.begin(), negative.end());
  const std::vector<double> all_ranks = ranks(all);
  const double positives = static_cast<double>(positive.size());
  const double rank_sum =
      std::accumulate(all_ranks.begin(), all_ranks.begin() + std::ssize(positive), 0.0);
  // The rank sum counts, for each positive score, what lies below it, itself and its fellows
  // included (the statistic of Mann and Whitney).
  return (rank_sum - positives * (positives + 1) / 2) /
         (positives * static_cast<double>(negative.size()));
}

double pearson(const std::vector<double>& first, const std::vector<double>& second) {
  if (first.empty()) {
    return 0.0;
  }
  const double first_mean = mean(first);
  const double second_mean = mean(second);
  double product = 0.0;
  double first_square = 0.0;
  double second_square = 0.0;
  for (std::size_t i = 0; i != first.size(); ++i) {
    const double x = first[i] - first_mean;
    const double y = second[i] - second_mean;
    product += x * y;
    first_square += x * x;
    second_square += y * y;
  }
  if (first_square == 0.0 || second_square == 0.0) {
    return 0.0;
  }
  return product / std::sqrt(first_square) / std::sqrt(second_square);
}

double spearman(const std::vector<double>& first, const std::vector<double>& second) {
  return pearson(ranks(first), ranks(second));
}
