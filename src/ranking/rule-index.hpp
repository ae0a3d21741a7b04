// The best rules for a query, without reading every row: what an engine keeps beside its tables.
//
// The result is that of scoring every active rule with `cosine`, to the last bit. The row index
// rules most rows out; those that are left are scored. Not installed. Tested by
// tests/ranking/rule-index-test.cpp and tests/engine/chain-test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <vector>

#include "../support/tables.hpp"
#include "row-index.hpp"

namespace VX::Dialog::detail {

/// Derived from a vector table, a set of active rules and a row table, which it is given at each
/// call. As a test or a debugger can write to the fields of an engine that it holds, the tables are
/// compared with what the index was made of: the two tables of ids entry by entry, and the vectors
/// by a fingerprint of the active ones. The fingerprint covers every number of up to kWholeNumbers;
/// of a larger table, where reading all would cost more than the answer, the first kSampledNumbers
/// of each row. So whoever writes single numbers into a large table by hand assigns an empty index,
/// too.
///
/// Comparing costs more than the answer itself. A class that shows its engine to no one
/// (trust_tables) is spared it: then the tables change only where rules_changed or renew is called.
///
/// Memory: 2 bytes for each number of a row, and 16 for each active rule.
class RuleIndex {
 public:
  static constexpr std::size_t kWholeNumbers = 131'072;  // 1 MB
  static constexpr std::size_t kSampledNumbers = 6;      // what a row has in its first cache line

  /// Nobody writes to the tables without telling the index.
  void trust_tables() { tables_are_trusted_ = true; }

  /// The active rules or their rows may have changed; the next call compares.
  void rules_changed() { is_current_ = false; }

  /// Indexes the rows at once, so that the next query need not.
  void renew(const VectorTable& vectors);

  /// The best score groups of the active rules, as get_max gives them into an empty map, of which
  /// only the `limit` highest groups are kept; `limit` is at least 1.
  ///
  /// Throws std::out_of_range when a row lies outside the table; `rule_rows` may have grown.
  ScoreGroups best_scores(const VectorTable& vectors, const std::vector<double>& query,
                          const std::set<int>& active, RowTable& rule_rows, std::size_t limit);

 private:
  bool has_rules_of(const std::set<int>& active, const RowTable& rule_rows) const;
  void take_rules(std::vector<int> rule_ids, std::vector<int> rows);
  void refresh(const VectorTable& vectors, const std::set<int>& active, RowTable& rule_rows);
  std::uint64_t fingerprint_of_active(const VectorTable& vectors) const;
  int row_of(std::size_t entry) const;
  const std::vector<double>& vector_of(const VectorTable& vectors, std::size_t entry) const;
  std::vector<std::size_t> entries_in_reach(const CoarseQuery& query, std::size_t count,
                                            double& reach) const;
  ScoreGroups best_of_all(const VectorTable& vectors, const std::vector<double>& query,
                          std::size_t limit) const;

  bool tables_are_trusted_ = false;
  bool is_current_ = false;
  RowIndex coarse_;  // of every row of the table
  std::uint64_t fingerprint_ = 0;
  std::uint64_t active_fingerprint_ = 0;

  // A place is an active rule, by ascending id; an entry is a row of theirs, by ascending row.
  std::vector<int> rule_ids_;     // by place
  std::vector<int> rows_;         // by place
  std::vector<int> next_place_;   // by place: the next rule of the same row, or -1
  std::vector<int> first_place_;  // by entry
};

}  // namespace VX::Dialog::detail
