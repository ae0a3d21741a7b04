#include <fstream>
#include <iostream>

#include <velmora/similarity.hpp>

#include "../support/number-text.hpp"
#include "cosine.hpp"

namespace VX::Dialog {

double cosine(std::vector<double> first, std::vector<double> second) {
  return detail::cosine_of(first, second);
}

void get_sim(std::string input_path, std::string output_path) {
  std::cout << "\n caclulating similarities \n";
  std::ifstream in(input_path);
  std::ofstream out(output_path);
  std::string line;
  std::getline(in, line);  // a header of any content
  while (std::getline(in, line)) {
    const std::vector<double> first = detail::numbers_of(line);
    // When the last line has no newline and no other follows, getline leaves `line` as it was, and
    // the vector is compared with itself.
    std::getline(in, line);
    const std::vector<double> second = detail::numbers_of(line);
    std::string text;
    detail::append_number(text, detail::cosine_of(first, second) + 0.0, 15);
    out << text << "\n";
  }
}

void print_vec(std::vector<double> vector) {
  std::cout << vector.size() << "\n";
  for (const double value : vector) {
    std::cout << value << " ";
  }
  std::cout << "\n";
}

}  // namespace VX::Dialog
