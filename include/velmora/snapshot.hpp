// Snapshot files: compiled rule vectors, keyed by stem set. Format: docs/file-formats.md.
//
// Tested by tests/snapshot/snapshot-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/export.hpp>

namespace VX::Dialog {

/// Writes a snapshot: a record for each row that some rule points to.
///
/// vectors      vector table, indexed by row; a row beyond it is written as an empty vector
/// rule_words   rule id to stems; looked up for the lowest id of each row
/// rows         rule id to row
/// path         written in place, truncated first; failures to open or to write are not reported
///
/// Throws std::out_of_range ("map::at:  key not found") when the lowest id of a row has no words;
/// the file then ends after the ids of that row.
VELMORA_EXPORT void write_ls(const std::vector<std::vector<double>>& vectors,
                             const std::map<int, std::vector<std::string>>& rule_words,
                             const std::map<int, int>& rows, const std::string& path);

/// Reads a plain vector list: the first line is skipped, each further one is a vector, up to its
/// first token that is not a number. A file that can't be opened gives an empty list.
VELMORA_EXPORT std::vector<std::vector<double>> load_precompiled_ls(const std::string& path);

/// A value as a stream writes it by default: six significant digits for a double.
/// For int, double and std::string.
template <typename T>
VELMORA_EXPORT std::string to_string(const T& value);

/// The elements as to_string writes them, joined by one blank. For int, double and std::string.
template <typename T>
VELMORA_EXPORT std::string vector2string(const std::vector<T>& values);

extern template VELMORA_EXPORT std::string to_string<int>(const int&);
extern template VELMORA_EXPORT std::string to_string<double>(const double&);
extern template VELMORA_EXPORT std::string to_string<std::string>(const std::string&);
extern template VELMORA_EXPORT std::string vector2string<int>(const std::vector<int>&);
extern template VELMORA_EXPORT std::string vector2string<double>(const std::vector<double>&);
extern template VELMORA_EXPORT std::string vector2string<std::string>(
    const std::vector<std::string>&);

}  // namespace VX::Dialog
