// Word counts over sentences in memory and over a text file.
//
// Tested by tests/text/text-tables-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/export.hpp>

namespace VX::Dialog {

/// Counts every occurrence of every stem. Over rules, whose stems are distinct, a count is a number
/// of rules.
VELMORA_EXPORT std::map<std::string, int> getRulesFrequencies(
    const std::map<int, std::vector<std::string>>& sentences);

/// Counts the words of a text file, one document a line; only the blank separates words.
///
/// lines   out: line number from 0 to the whole line; entries of higher numbers stay
///
/// A file that can't be opened gives an empty table and leaves `lines` as it was.
VELMORA_EXPORT std::map<std::string, int> getfreqs(const std::string& path,
                                                   std::map<int, std::string>& lines);

}  // namespace VX::Dialog
