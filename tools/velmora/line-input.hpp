// Sentences from standard input, with a prompt and line editing when it is a terminal.
//
// Tested by tools/velmora/tests/commands-test.cpp.
#pragma once

#include <string>

/// Whether somebody types at the other end.
bool input_is_terminal();

/// Reads the next line, without its end. False at the end of the input. Throws std::runtime_error
/// for a line that is not UTF-8; the text names it.
bool read_line(std::string& line);
