// Selection of the best rules for a query vector, and prints of its results for debugging.
//
// Tested by tests/ranking/ranking-test.cpp.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include <velmora/export.hpp>

namespace VX::Dialog {

/// Scores every active rule against a query and groups the ids by score.
///
/// vectors   vector table, indexed by row
/// query     latent vector
/// ranked    in and out: score to rule ids in ascending order; ids are added to what is there
/// active    ids to score; not changed
/// rows      rule id to row; an id without an entry gets row 0, and the entry
///
/// Throws std::out_of_range at the first id whose row lies outside the table; ids scored before it
/// are in `ranked`. Writes to `rows`, so calls on one table must not overlap.
VELMORA_EXPORT void get_max(const std::vector<std::vector<double>>& vectors,
                            const std::vector<double>& query,
                            std::map<double, std::vector<int>>& ranked, std::set<int>& active,
                            std::map<int, int>& rows);

/// The same with the rule id itself as the row, ending after the first score of 1 or more.
VELMORA_EXPORT std::map<double, std::vector<int>> get_max2(
    const std::vector<std::vector<double>>& vectors, const std::vector<double>& query,
    std::set<int> active);

/// Prints buckets with their rules' words, worst first: at most n + 1, all of them for a negative
/// n. Throws std::out_of_range ("map::at:  key not found") at a rule without words.
VELMORA_EXPORT void print_res(const std::map<double, std::vector<int>>& ranked,
                              const std::map<int, std::vector<std::string>>& rule_words, int n);

/// Prints a vector a line, each value followed by a blank.
VELMORA_EXPORT void print_ls(const std::vector<std::vector<double>>& vectors);

/// Prints the weights of queries: word id to weight, one map a query.
VELMORA_EXPORT void print_tfidf(const std::vector<std::map<int, double>>& weights);

}  // namespace VX::Dialog
