#include <algorithm>
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

// Stems that are no more frequent than the threshold. Mostly none is, and asking for them all at
// once is cheaper than to look every stem of every sentence up.
std::set<std::string> rare_stems(const StemCounts& frequencies, int threshold) {
  std::set<std::string> rare;
  for (const auto& [stem, count] : frequencies) {
    if (count <= threshold) {
      rare.insert(rare.end(), stem);
    }
  }
  return rare;
}

}  // namespace

void preprocess(const StemCounts& frequencies, const RuleTable& sentences, int threshold,
                RowTable& rows, RuleTable& unique) {
  const std::set<std::string> rare = rare_stems(frequencies, threshold);
  std::map<std::vector<std::string>, int> row_of_stem_set;
  for (const auto& [sentence_id, stems] : sentences) {
    if (stems.empty()) {
      continue;
    }
    std::vector<std::string> kept = stems;
    if (!rare.empty()) {
      std::erase_if(kept, [&](const std::string& stem) { return rare.contains(stem); });
    }
    std::vector<std::string> stem_set = kept;
    std::sort(stem_set.begin(), stem_set.end());
    stem_set.erase(std::unique(stem_set.begin(), stem_set.end()), stem_set.end());
    const int next_row = static_cast<int>(row_of_stem_set.size());
    const auto [entry, is_new] = row_of_stem_set.try_emplace(std::move(stem_set), next_row);
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
