// Which words of a sentence a model knows.
//
// The matcher drops what its dictionary does not hold, and scores a rule that has nothing left like
// the first rule: a host should know such rules before it activates them. Used by velmora
// and velmora-evaluate; tested by tools/velmora/tests/commands-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <fennel/stemmer.hpp>

class KnownWords {
 public:
  /// dictionary_path   the file "dictionary" of a model directory
  KnownWords(const std::string& language, std::string dictionary_path);

  /// Known stems of a sentence, sorted and without repeats: what the matcher makes of it.
  std::vector<std::string> of(const std::string& sentence);

  const std::map<std::string, int>& vocabulary() const { return vocabulary_; }

 private:
  VX::Dialog::Stemmer stemmer_;
  std::map<std::string, int> vocabulary_;
};

/// Takes out of a table (id or name to sentences) the entries without a known word. Returns their
/// keys.
template <typename Key>
std::vector<Key> remove_unknown(std::map<Key, std::vector<std::string>>& table, KnownWords& words) {
  std::vector<Key> removed;
  for (auto entry = table.begin(); entry != table.end();) {
    bool known = false;
    for (const std::string& sentence : entry->second) {
      known = known || !words.of(sentence).empty();
    }
    if (!known) {
      removed.push_back(entry->first);
    }
    entry = known ? std::next(entry) : table.erase(entry);
  }
  return removed;
}
