#include <fstream>

#include <velmora/frequencies.hpp>

#include "../support/tables.hpp"
#include "../support/text-file.hpp"

namespace VX::Dialog {

using detail::RuleTable;
using detail::StemCounts;

StemCounts getRulesFrequencies(const RuleTable& sentences) {
  StemCounts frequencies;
  for (const auto& [sentence_id, stems] : sentences) {
    for (const std::string& stem : stems) {
      ++frequencies[stem];
    }
  }
  return frequencies;
}

StemCounts getfreqs(const std::string& path, std::map<int, std::string>& lines) {
  StemCounts frequencies;
  std::ifstream in(path);
  std::string line;
  for (int line_number = 0; std::getline(in, line); ++line_number) {
    for (const std::string& word : detail::corpus_words(line)) {
      ++frequencies[word];
    }
    lines[line_number] = line;
  }
  return frequencies;
}

}  // namespace VX::Dialog
