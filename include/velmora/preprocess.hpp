// From stems to word ids, and the folding of sentences with equal stem sets.
//
// No function here keeps state, logs or fails; calls may overlap on different data. Tested by
// tests/text/text-tables-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/export.hpp>

namespace VX::Dialog {

/// Gives each distinct stem set a row.
///
/// frequencies   stem to count
/// sentences     sentence id to stems; one without stems gets no row
/// threshold     a stem whose known count is at or below it is dropped; a stem without a
///               count stays
/// rows          out: sentence id to row, rows counted from 0 in the order in which new stem
///               sets are met by ascending id
/// unique        out: first sentence of each stem set to its kept stems, repeats included
///
/// The outputs are not cleared: entries of other ids stay.
VELMORA_EXPORT void preprocess(const std::map<std::string, int>& frequencies,
                               const std::map<int, std::vector<std::string>>& sentences,
                               int threshold, std::map<int, int>& rows,
                               std::map<int, std::vector<std::string>>& unique);

/// Replaces stems by word ids; a stem outside the vocabulary is skipped.
///
/// sentences    sentence id to stems
/// vocabulary   word to word id
/// word_ids     out: sentence id to word ids in stem order, also when there are none; entries of
///              other ids stay
VELMORA_EXPORT void word_indices(const std::map<int, std::vector<std::string>>& sentences,
                                 const std::map<std::string, int>& vocabulary,
                                 std::map<int, std::vector<int>>& word_ids);

}  // namespace VX::Dialog
