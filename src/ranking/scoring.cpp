#include "scoring.hpp"

#include <cmath>
#include <cstddef>

#include "cosine.hpp"

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

ScoreGroups best_scores(const VectorTable& vectors, const std::vector<double>& query,
                        const std::set<int>& active, RowTable& rule_rows, std::size_t limit) {
  const ActiveRows found = find_rows(vectors, active, rule_rows);
  if (!found.complete) {
    (void)vectors.at(static_cast<std::size_t>(found.outside));
  }
  const std::vector<double> scores = score_rows(vectors, query, found.rows);
  ScoreGroups best;
  double lowest = 0.0;  // score of the lowest group, once there are `limit`
  bool dropped = false;
  for (std::size_t place = 0; place != scores.size(); ++place) {
    const double score = scores[place];
    if (best.size() == limit) {
      // A group once dropped never comes back: only better ones dropped it.
      if (score < lowest) {
        dropped = true;
        continue;
      }
      // An ordered map has a score that is no number in its lowest group, which is gone by then.
      if (std::isnan(score) && dropped) {
        continue;
      }
    }
    best[score].push_back(found.rule_ids[place]);
    if (best.size() > limit) {
      best.erase(best.begin());
      dropped = true;
    }
    lowest = best.begin()->first;
  }
  return best;
}

}  // namespace VX::Dialog::detail
