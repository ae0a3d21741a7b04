// Folding of equal stem sets, and stems to word ids. Tested by tests/text/text-tables-test.cpp.
#include <velmora/preprocess.hpp>

#include <set>

namespace VX::Dialog {

namespace {

bool is_rare(const std::string& stem, const std::map<std::string, int>& frequencies,
             int threshold) {
  const auto entry = frequencies.find(stem);
  return entry != frequencies.end() && entry->second <= threshold;
}

}  // namespace

void preprocess(const std::map<std::string, int>& frequencies,
                const std::map<int, std::vector<std::string>>& sentences, int threshold,
                std::map<int, int>& rows, std::map<int, std::vector<std::string>>& unique) {
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

void word_indices(const std::map<int, std::vector<std::string>>& sentences,
                  const std::map<std::string, int>& vocabulary,
                  std::map<int, std::vector<int>>& word_ids) {
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
