#include "messages.hpp"

#include <iostream>
#include <regex>
#include <sstream>

void note(const std::string& text) {
  std::cerr << "velmora: note: " << text << "\n";
}

void warn(const std::string& text) {
  std::cerr << "velmora: warning: " << text << "\n";
}

void report_error(const std::string& text) {
  static const std::regex kPlace("^(.+?:[0-9]+: )(.*)$");
  std::istringstream lines(text);
  std::string line;
  while (std::getline(lines, line)) {
    std::smatch parts;
    if (std::regex_match(line, parts, kPlace)) {
      std::cerr << parts[1] << "error: " << parts[2] << "\n";
    } else {
      std::cerr << "velmora: error: " << line << "\n";
    }
  }
}
