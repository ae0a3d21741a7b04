// Lists of rule ids; see id-list.hpp.
#include "id-list.hpp"

#include <charconv>
#include <sstream>

namespace {

/// Reads "7" as 7 to 7 and "7-9" as 7 to 9.
bool read_range(const std::string& item, int& first, int& last) {
  const char* end = item.data() + item.size();
  const auto [middle, first_error] = std::from_chars(item.data(), end, first);
  if (first_error != std::errc()) {
    return false;
  }
  if (middle == end) {
    last = first;
    return true;
  }
  if (*middle != '-') {
    return false;
  }
  const auto [stop, last_error] = std::from_chars(middle + 1, end, last);
  return last_error == std::errc() && stop == end && first <= last;
}

}  // namespace

std::set<int> pick_ids(const std::string& list,
                       const std::map<int, std::vector<std::string>>& rules) {
  std::set<int> picked;
  std::istringstream items(list);
  std::string item;
  while (std::getline(items, item, ',')) {
    int first = 0;
    int last = 0;
    if (!read_range(item, first, last)) {
      throw WrongUsage("--active: '" + item + "' is no rule id and no range of ids");
    }
    const auto begin = rules.lower_bound(first);
    const auto end = rules.upper_bound(last);
    if (begin == end) {
      throw WrongUsage("--active: there is no rule " + item);
    }
    for (auto rule = begin; rule != end; ++rule) {
      picked.insert(rule->first);
    }
  }
  return picked;
}
