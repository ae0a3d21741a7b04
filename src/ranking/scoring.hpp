// Where the active rules find their vectors, and the best groups of their scores.
//
// Used by get_max and the rule index. Not installed. Tested by tests/ranking/ranking-test.cpp.
#pragma once

#include <cstddef>
#include <set>
#include <utility>
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

/// The `limit` highest groups of the ordered map that get_max makes of the same scores.
class BestGroups {
 public:
  explicit BestGroups(std::size_t limit) : limit_(limit) {}

  /// Rules come by ascending id.
  void add(int rule_id, double score);

  const ScoreGroups& groups() const { return groups_; }
  ScoreGroups take() { return std::move(groups_); }

 private:
  std::size_t limit_;
  ScoreGroups groups_;
  double lowest_ = 0.0;  // score of the lowest group, once there is one
  bool dropped_ = false;
};

}  // namespace VX::Dialog::detail
