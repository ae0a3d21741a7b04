#include "terminal.hpp"

#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include <langinfo.h>

void use_utf8_locale() {
  std::setlocale(LC_CTYPE, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
  }
}

Paint output_paint() {
  const char* no_colour = std::getenv("NO_COLOR");
  if (isatty(STDOUT_FILENO) == 0 || (no_colour != nullptr && *no_colour != '\0')) {
    return {};
  }
  return {"\033[1m", "\033[32m", "\033[2m", "\033[0m"};
}

std::size_t display_width(const std::string& text) {
  std::wstring wide(text.size() + 1, L'\0');
  const std::size_t length = std::mbstowcs(wide.data(), text.c_str(), wide.size());
  if (length == static_cast<std::size_t>(-1)) {
    return text.size();
  }
  const int columns = wcswidth(wide.data(), length);
  return columns < 0 ? length : static_cast<std::size_t>(columns);
}

std::string padded(const std::string& text, std::size_t width) {
  const std::size_t used = display_width(text);
  return text + std::string(used < width ? width - used : 0, ' ');
}
