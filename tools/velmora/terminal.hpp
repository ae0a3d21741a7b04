// What depends on the terminal: the encoding of typed letters, colours, and how wide a text is.
//
// Tested by tools/velmora/tests/commands-test.cpp.
#pragma once

#include <string>

/// Makes letters beyond ASCII survive a locale that does not know them, such as C.
void use_utf8_locale();

/// Codes that switch colours on and off; empty texts where colours make no sense.
struct Paint {
  const char* strong = "";
  const char* bar = "";
  const char* faint = "";
  const char* plain = "";
};

/// Colours when standard output is a terminal and NO_COLOR is not set.
Paint output_paint();

/// Columns that a UTF-8 text takes on a terminal: two for a Japanese character.
std::size_t display_width(const std::string& text);

/// The text, followed by as many blanks as make it `width` columns wide.
std::string padded(const std::string& text, std::size_t width);
