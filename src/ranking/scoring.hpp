// Scores of the active rules for one query, and the best groups of them.
//
// Shared by get_max and the engines. Not installed. Tested by tests/ranking/ranking-test.cpp.
#pragma once

#include <cstddef>
#include <set>
#include <vector>

#include "../support/tables.hpp"

namespace VX::Dialog::detail {

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
/// without a known word come to be scored as the first stem set. After a row outside the table no
/// further entry is made.
ActiveRows find_rows(const VectorTable& vectors, const std::set<int>& active, RowTable& rule_rows);

/// The best score groups of the active rules, as get_max gives them into an empty map, of which
/// only the `limit` highest groups are kept.
///
/// Throws std::out_of_range when a row lies outside the table; `rule_rows` may have grown.
ScoreGroups best_scores(const VectorTable& vectors, const std::vector<double>& query,
                        const std::set<int>& active, RowTable& rule_rows, std::size_t limit);

}  // namespace VX::Dialog::detail
