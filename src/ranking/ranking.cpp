#include <iostream>

#include <velmora/ranking.hpp>
#include <velmora/snapshot.hpp>

#include "../support/checked-lookup.hpp"
#include "../support/tables.hpp"
#include "cosine.hpp"
#include "scoring.hpp"

namespace VX::Dialog {

using detail::RowTable;
using detail::RuleTable;
using detail::ScoreGroups;
using detail::SentenceWeights;
using detail::VectorTable;

void get_max(const VectorTable& vectors, const std::vector<double>& query, ScoreGroups& ranked,
             std::set<int>& active, RowTable& rows) {
  const detail::ActiveRows found = detail::find_rows(vectors, active, rows);
  auto rule_id = found.rule_ids.begin();
  for (const double score : detail::score_rows(vectors, query, found.rows)) {
    ranked[score].push_back(*rule_id++);
  }
  if (!found.complete) {
    (void)vectors.at(static_cast<std::size_t>(found.outside));
  }
}

ScoreGroups get_max2(const VectorTable& vectors, const std::vector<double>& query,
                     std::set<int> active) {
  ScoreGroups ranked;
  for (const int rule_id : active) {
    const double score = detail::cosine_of(vectors.at(static_cast<std::size_t>(rule_id)), query);
    ranked[score].push_back(rule_id);
    if (score >= 1.0) {
      break;  // nothing after a full match is looked at
    }
  }
  return ranked;
}

void print_res(const ScoreGroups& ranked, const RuleTable& rule_words, int n) {
  int bucket = 0;
  for (const auto& [score, rule_ids] : ranked) {
    std::cout << " distance " << score << "\n[ ";
    for (const int rule_id : rule_ids) {
      std::cout << "index " << rule_id << "\n"
                << vector2string(detail::checked_lookup(rule_words, rule_id)) << "\n";
    }
    std::cout << " ]\n\n";
    if (bucket++ == n) {
      break;  // one more than n, by contract
    }
  }
}

void print_ls(const VectorTable& vectors) {
  for (const std::vector<double>& vector : vectors) {
    for (const double value : vector) {
      std::cout << value << " ";
    }
    std::cout << "\n";
  }
}

void print_tfidf(const std::vector<SentenceWeights>& weights) {
  for (const SentenceWeights& query : weights) {
    std::cout << "query index "
              << "\n[\n";
    for (const auto& [word_id, weight] : query) {
      std::cout << "word index " << word_id << "\n"
                << "tfidf " << weight << "\n";
    }
    std::cout << "]\n";
  }
}

}  // namespace VX::Dialog
