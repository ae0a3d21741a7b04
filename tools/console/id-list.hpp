// Lists of rule ids as a user types them: "101,600-699". Tested by
// tools/console/tests/console-test.cpp.
#pragma once

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

/// What the user typed makes no sense; the text says why.
struct WrongUsage : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Picks ids of a rule table; a range means the rules there are in it. Throws WrongUsage for an
/// item that is no id or range, or that names no rule.
std::set<int> pick_ids(const std::string& list,
                       const std::map<int, std::vector<std::string>>& rules);
