#include "support.hpp"

#include <cstdlib>
#include <iostream>
#include <sstream>

namespace fuzz {

const test::TemporaryFolder& folder() {
  static const test::TemporaryFolder only;
  return only;
}

void require(bool holds, const char* what) {
  if (!holds) {
    std::cerr << "does not hold: " << what << "\n";
    std::abort();
  }
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

}  // namespace fuzz
