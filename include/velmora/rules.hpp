// Rules of a dialogue, in memory and as a file. Tested by tests/matcher/files-test.cpp.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include <velmora/export.hpp>

namespace velmora {

/// What a dialogue reacts to: one or several sentences that mean the same.
struct Rule {
  int id = 0;                          ///< any number that no other rule has
  std::vector<std::string> sentences;  ///< UTF-8
  /// Line of each sentence in the file that the rule was read from, counted from 1; empty for a
  /// rule that came from no file. Matching does not look at it.
  std::vector<std::size_t> lines = {};
};

/// Reads a rules file: "id<TAB>sentence" on each line, UTF-8. Lines with the same id make one rule,
/// in the order of the file; the rules come in the order of their first lines. The sentence is the
/// rest of the line, without white space at its ends. Blank lines and lines that begin with '#' are
/// skipped, a byte order mark and carriage returns dropped.
///
/// Throws Error, naming the file, the line and what was expected: the file can't be read (a folder,
/// say) or has no rule; a line without a tab, with an empty sentence, with ill-formed UTF-8 or with
/// an id that is not a 32-bit int.
VELMORA_EXPORT std::vector<Rule> read_rules(const std::filesystem::path& path);

}  // namespace velmora
