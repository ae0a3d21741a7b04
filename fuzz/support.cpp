#include "support.hpp"

#include <cstdlib>
#include <cstring>
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

bool same_bits(const std::vector<double>& first, const std::vector<double>& second) {
  return first.size() == second.size() &&
         (first.empty() ||
          std::memcmp(first.data(), second.data(), first.size() * sizeof(double)) == 0);
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
