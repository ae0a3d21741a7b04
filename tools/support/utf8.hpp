// Whether bytes are text.
//
// Used by the programs that must not take a binary file for text. Tested by
// tools/train/tests/corpus-test.cpp.
#pragma once

#include <string>
#include <string_view>

/// Why the bytes are not UTF-8 text, for a message: "a zero byte (is it a binary file?)" or
/// "ill-formed UTF-8"; empty for text.
std::string why_not_text(std::string_view bytes);
