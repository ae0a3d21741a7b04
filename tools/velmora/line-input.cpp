#include "line-input.hpp"

#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include <editline/readline.h>

#include "../../src/support/utf8.hpp"

namespace {

bool type_line(std::string& line) {
  char* typed = readline("> ");
  if (typed == nullptr) {
    std::cout << "\n";  // leaves the line of the prompt
    return false;
  }
  line = typed;
  std::free(typed);
  if (!line.empty()) {
    add_history(line.c_str());
  }
  return true;
}

}  // namespace

bool input_is_terminal() {
  return isatty(STDIN_FILENO) != 0;
}

bool read_line(std::string& line) {
  if (input_is_terminal()) {
    return type_line(line);
  }
  static int line_number = 0;
  if (!std::getline(std::cin, line)) {
    return false;
  }
  ++line_number;
  if (!line.empty() && line.back() == '\r') {
    line.pop_back();
  }
  if (!VX::Dialog::detail::is_utf8(line)) {
    throw std::runtime_error("standard input:" + std::to_string(line_number) +
                             ": expected UTF-8 text");
  }
  return true;
}
