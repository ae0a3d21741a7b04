#include "support.hpp"

#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace fuzz {

const test::TemporaryFolder& folder() {
  static const test::TemporaryFolder only;
  return only;
}

void require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "does not hold: %s\n", what);
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

Sections sections_of(const std::string& input, std::size_t count) {
  Sections sections(count);
  std::size_t section = 0;
  for (const std::string& line : lines_of(input)) {
    if (line == "--" && section + 1 != count) {
      ++section;
    } else {
      sections[section] += line + "\n";
    }
  }
  return sections;
}

bool is_small_model(const std::string& model, const std::string& factors) {
  int columns = 0;
  int rows = 0;
  int dim = 0;
  std::istringstream header(factors);
  header >> columns;
  header >> rows;
  std::istringstream(model) >> dim;
  return columns <= 100 && rows <= 30 && dim <= 30;
}

}  // namespace fuzz
