// What matching many sentences costs a C++ host; bench/match_many.py holds the Python module
// against it.
//
// usage: velmora-bench-match-many RULES SENTENCES
// Prints the seconds of the fastest of several rounds over all lines of SENTENCES, by one thread.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include <velmora/matcher.hpp>

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: velmora-bench-match-many RULES SENTENCES\n");
    return 2;
  }
  const velmora::Matcher matcher(velmora::Model::installed("enu"), velmora::read_rules(argv[1]));
  std::vector<std::string> sentences;
  std::ifstream in(argv[2]);
  for (std::string line; std::getline(in, line);) {
    sentences.push_back(line);
  }
  double fastest = std::numeric_limits<double>::infinity();
  constexpr int kRounds = 3;
  for (int round = 0; round != kRounds; ++round) {
    const auto begin = std::chrono::steady_clock::now();
    const std::vector<velmora::Answer> answers = matcher.match(sentences);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
    if (answers.size() != sentences.size()) {
      return 1;
    }
    fastest = std::min(fastest, elapsed.count());
  }
  std::printf("%.6f\n", fastest);
  return 0;
}
