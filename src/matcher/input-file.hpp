// Files that people write: read as a whole, checked line by line.
//
// Used by the readers of rules, expectations and models. Every complaint is an Error whose text
// begins with path and line. Not installed. Tested by tests/matcher/files-test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::detail {

/// Throws Error("path: what").
[[noreturn]] void fail(const std::filesystem::path& path, const std::string& what);
/// Throws Error("path:line: what").
[[noreturn]] void fail(const std::filesystem::path& path, std::size_t line,
                       const std::string& what);

/// The content of a file that can be read; throws Error for a folder, and where opening or reading
/// fails.
std::string read_input(const std::filesystem::path& path);

/// One line of a table "id<TAB>sentence".
struct IdLine {
  std::size_t line = 0;
  std::string id;
  std::string sentence;
};

/// The lines of a table, without blank lines and comments. Throws Error as read_rules does, for the
/// first ten bad lines at once; ids are checked by `id_fault`, which says what is wrong with one or
/// nothing.
std::vector<IdLine> read_id_lines(const std::filesystem::path& path,
                                  std::string (*id_fault)(std::string_view id));

/// The 32-bit int that a text is, as a whole.
std::optional<int> int_of(std::string_view text);

}  // namespace velmora::detail
