// Cosines of one query with the vectors of many rules.
//
// The scoring kernel of matching, shared by get_max, get_max2 and the engines. Each score has the
// bits that `cosine` gives: the three sums run in index order, for several rows side by side so
// that the adder is kept busy, and the query's own norm is computed once. Not installed. Tested by
// tests/ranking/ranking-test.cpp.
#pragma once

#include <map>
#include <set>
#include <vector>

namespace VX::Dialog::detail {

using VectorTable = std::vector<std::vector<double>>;

/// Where each active rule finds its vector.
struct ActiveRows {
  /// Active rules by ascending id, up to the first whose row lies outside the table.
  std::vector<int> rule_ids;
  /// Row of each of them.
  std::vector<int> rows;
  /// True when all rows lie inside the table; otherwise `outside` is the first that does not.
  bool complete = true;
  int outside = 0;
};

/// Looks the active rules up. An id without an entry gets row 0, and the entry: this is how rules
/// without a known word come to be scored as the first stem set. No entry is made behind a row
/// outside the table.
ActiveRows find_rows(const VectorTable& vectors, const std::set<int>& active,
                     std::map<int, int>& rule_rows);

/// cosine(vectors[row], query) for each of the rows, which must lie inside the table. A row is
/// scored once however often it comes.
std::vector<double> score_rows(const VectorTable& vectors, const std::vector<double>& query,
                               const std::vector<int>& rows);

/// The best score groups of the active rules: score to rule ids, as get_max gives them into an
/// empty map, of which only the `limit` highest groups are kept.
///
/// Throws std::out_of_range when a row lies outside the table; `rule_rows` may have grown.
std::map<double, std::vector<int>> best_scores(const VectorTable& vectors,
                                               const std::vector<double>& query,
                                               const std::set<int>& active,
                                               std::map<int, int>& rule_rows, std::size_t limit);

}  // namespace VX::Dialog::detail
