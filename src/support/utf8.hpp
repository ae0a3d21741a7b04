// UTF-8: is it well-formed, and which characters does it hold?
//
// Used by the readers and the character view of the matcher. Not installed. Tested by
// tests/matcher/files-test.cpp.
#pragma once

#include <string>
#include <string_view>

namespace VX::Dialog::detail {

/// True for well-formed UTF-8: no overlong forms, no surrogates, nothing beyond U+10FFFF.
bool is_utf8(std::string_view text);

/// The characters of a text; each ill-formed byte becomes U+FFFD.
std::u32string characters_of(std::string_view text);

}  // namespace VX::Dialog::detail
