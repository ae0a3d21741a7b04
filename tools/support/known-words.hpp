// Which words of a sentence a model knows.
//
// The matcher drops what its dictionary does not hold, and scores a rule that has nothing left like
// the first rule: a host should know such rules before it activates them. Used by velmora
// and velmora-evaluate; tested by tools/velmora/tests/commands-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/model.hpp>

/// Known stems of a sentence, sorted and without repeats: what the published classes make of it.
std::vector<std::string> known_stems(const velmora::Model& model, const std::string& sentence);

/// Takes out of a table (id or name to sentences) the entries without a known word. Returns their
/// keys.
template <typename Key>
std::vector<Key> remove_unknown(std::map<Key, std::vector<std::string>>& table,
                                const velmora::Model& model) {
  std::vector<Key> removed;
  for (auto entry = table.begin(); entry != table.end();) {
    bool known = false;
    for (const std::string& sentence : entry->second) {
      known = known || !known_stems(model, sentence).empty();
    }
    if (!known) {
      removed.push_back(entry->first);
    }
    entry = known ? std::next(entry) : table.erase(entry);
  }
  return removed;
}
