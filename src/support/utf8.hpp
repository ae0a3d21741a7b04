// Is a text well-formed UTF-8?
//
// Used by the readers of files that people write. Not installed. Tested by
// tests/matcher/files-test.cpp.
#pragma once

#include <string_view>

namespace VX::Dialog::detail {

/// True for well-formed UTF-8: no overlong forms, no surrogates, nothing beyond U+10FFFF.
bool is_utf8(std::string_view text);

}  // namespace VX::Dialog::detail
