// Readers of the two word tables of a model directory: "dictionary" and "idf".
//
// Formats: docs/file-formats.md. Both are safe from any thread. Tested by
// tests/text/text-tables-test.cpp.
#pragma once

#include <map>
#include <string>

#include <velmora/export.hpp>

namespace VX::Dialog {

/// Reads a dictionary: the first token of each line is a word, its id the number of lines before.
///
/// The first line without a token ends it. A word that comes twice keeps the later id. A file that
/// can't be opened reads as empty; nothing is reported.
VELMORA_EXPORT std::map<std::string, int> get_word_ids(std::string& path);

/// Reads an idf table: a word id and its value on each line.
///
/// The first line that does not begin with an int and a number ends it, silently. A later line
/// replaces an earlier one with the same id. A file that can't be opened reads as empty.
VELMORA_EXPORT std::map<int, double> load_idf(std::string& path);

}  // namespace VX::Dialog
