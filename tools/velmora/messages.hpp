// Messages on standard error, in the form of a compiler, which editors understand.
//
// Tested by tools/velmora/tests/commands-test.cpp.
#pragma once

#include <string>

/// "velmora: note: text"
void note(const std::string& text);
/// "velmora: warning: text"
void warn(const std::string& text);
/// Each line of the text as "velmora: error: line", or as "file:7: error: what is wrong" when it
/// speaks of a line of a file: "file:7: what is wrong".
void report_error(const std::string& text);
