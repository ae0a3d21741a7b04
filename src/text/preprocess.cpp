// Folding of equal stem sets, and stems to word ids. Tested by tests/text/text-tables-test.cpp.
#include <set>

#include <velmora/preprocess.hpp>

#include "../support/tables.hpp"

namespace VX::Dialog {

using detail::RowTable;
using detail::RuleTable;
using detail::StemCounts;
using detail::Vocabulary;
using detail::WordIdTable;

namespace {

bool is_rare(const std::string& stem, const StemCounts& frequencies, int threshold) {
  const auto entry = frequencies.find(stem);
  return entry != frequencies.end() && entry->second <= threshold;
}

}  // namespace

void preprocess(const StemCounts& frequencies, const RuleTable& sentences, int threshold,
                RowTable& rows, RuleTable& unique) {
  std::map<std::set<std::string>, int> row_of_stem_set;
  for (const auto& [sentence_id, stems] : sentences) {
    if (stems.empty()) {
      continue;
    }
    std::vector<std::string> kept;
    for (const std::string& stem : stems) {
      if (!is_rare(stem, frequencies, threshold)) {
        kept.push_back(stem);
      }
    }
    const int next_row = static_cast<int>(row_of_stem_set.size());
    const auto [entry, is_new] =
        row_of_stem_set.try_emplace(std::set<std::string>(kept.begin(), kept.end()), next_row);
    rows[sentence_id] = entry->second;
    if (is_new) {
      unique[sentence_id] = std::move(kept);
    }
  }
}

void word_indices(const RuleTable& sentences, const Vocabulary& vocabulary, WordIdTable& word_ids) {
  for (const auto& [sentence_id, stems] : sentences) {
    std::vector<int> ids;
    for (const std::string& stem : stems) {
      const auto word = vocabulary.find(stem);
      if (word != vocabulary.end()) {
        ids.push_back(word->second);
      }
    }
    word_ids[sentence_id] = std::move(ids);
  }
}

}  // namespace VX::Dialog
