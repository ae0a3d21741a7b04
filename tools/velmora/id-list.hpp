// Lists of rule ids as a user types them: "101,600-699". Tested by
// tools/velmora/tests/commands-test.cpp.
#pragma once

#include <set>
#include <string>

/// Picks ids out of those there are; a range means the rules that lie in it, "all" every rule.
/// Throws WrongUsage for an item that is no id or range, or that names no rule.
std::set<int> pick_ids(const std::string& list, const std::set<int>& rule_ids);
