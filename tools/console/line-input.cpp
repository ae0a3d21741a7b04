// Sentences from standard input; see line-input.hpp.
#include "line-input.hpp"

#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include <editline/readline.h>

bool input_is_terminal() {
  return isatty(STDIN_FILENO) != 0;
}

bool read_sentence(std::string& sentence) {
  if (!input_is_terminal()) {
    if (!std::getline(std::cin, sentence)) {
      return false;
    }
    if (!sentence.empty() && sentence.back() == '\r') {
      sentence.pop_back();
    }
    return true;
  }
  char* line = readline("> ");
  if (line == nullptr) {
    std::cout << "\n";  // leaves the line of the prompt
    return false;
  }
  sentence = line;
  std::free(line);
  if (!sentence.empty()) {
    add_history(sentence.c_str());
  }
  return true;
}
