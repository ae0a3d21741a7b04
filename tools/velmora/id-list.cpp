#include "id-list.hpp"

#include <charconv>
#include <sstream>

#include "command-line.hpp"

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

std::set<int> pick_ids(const std::string& list, const std::set<int>& rule_ids) {
  if (list == "all") {
    return rule_ids;
  }
  std::set<int> picked;
  std::istringstream items(list);
  std::string item;
  while (std::getline(items, item, ',')) {
    int first = 0;
    int last = 0;
    if (!read_range(item, first, last)) {
      throw WrongUsage("'" + item + "' is neither a rule id nor a range of ids such as 600-699");
    }
    const auto begin = rule_ids.lower_bound(first);
    const auto end = rule_ids.upper_bound(last);
    if (begin == end) {
      throw WrongUsage("there is no rule " + item);
    }
    picked.insert(begin, end);
  }
  if (picked.empty()) {
    throw WrongUsage("no rule is named");
  }
  return picked;
}
