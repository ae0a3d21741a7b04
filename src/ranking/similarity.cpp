// The cosine, and the comparison of vectors in a file. Tested by tests/offline/offline-test.cpp.
#include <cmath>
#include <fstream>
#include <iostream>
#include <velmora/similarity.hpp>

#include "../support/number-text.hpp"
#include "cosine-of.hpp"

namespace VX::Dialog {

namespace detail {

double cosine_of(const std::vector<double>& first, const std::vector<double>& second) {
  if (first.empty() || second.size() < first.size()) {
    return 0.0;
  }
  double dot = 0.0;
  double first_square = 0.0;
  double second_square = 0.0;
  // Three sums side by side, each in index order; a longer second vector's tail does not count.
  for (std::size_t d = 0; d != first.size(); ++d) {
    dot += first[d] * second[d];
    first_square += first[d] * first[d];
    second_square += second[d] * second[d];
  }
  if (dot == 0.0) {
    return 0.0;
  }
  return dot / std::sqrt(first_square) / std::sqrt(second_square);
}

}  // namespace detail

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
    // When there is no further line because the last one has no newline, the text stays what it is
    // and the vector is compared with itself.
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
