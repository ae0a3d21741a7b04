#include "scoring.hpp"

#include <cmath>

namespace VX::Dialog::detail {

ActiveRows find_rows(const VectorTable& vectors, const std::set<int>& active, RowTable& rule_rows) {
  ActiveRows found;
  found.rule_ids.reserve(active.size());
  found.rows.reserve(active.size());
  auto entry = rule_rows.begin();
  for (const int rule_id : active) {
    // Mostly both tables hold the same ids, and the next entry is the one looked for.
    if (entry == rule_rows.end() || entry->first != rule_id) {
      entry = rule_rows.try_emplace(rule_id, 0).first;
    }
    const int row = entry->second;
    if (static_cast<std::size_t>(row) >= vectors.size()) {
      found.complete = false;
      found.outside = row;
      break;
    }
    found.rule_ids.push_back(rule_id);
    found.rows.push_back(row);
    ++entry;
  }
  return found;
}

void BestGroups::add(int rule_id, double score) {
  if (groups_.size() == limit_) {
    // A group once dropped never comes back: only better ones dropped it.
    if (score < lowest_) {
      dropped_ = true;
      return;
    }
    // An ordered map has a NaN in its lowest group, which is gone by then.
    if (std::isnan(score) && dropped_) {
      return;
    }
  }
  groups_[score].push_back(rule_id);
  if (groups_.size() > limit_) {
    groups_.erase(groups_.begin());
    dropped_ = true;
  }
  lowest_ = groups_.begin()->first;
}

}  // namespace VX::Dialog::detail
