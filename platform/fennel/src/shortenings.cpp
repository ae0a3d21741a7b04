// English contractions and French elisions, by table.
//
// The same meaning should give the same stems however it is written, so a shortened form becomes
// the words that it stands for: "don't" is "do not" and "l'eau" is "le eau". Other words
// lose their apostrophes: "o'clock" is "oclock", "aujourd'hui" is "aujourdhui". Models hold these
// stems, so a change of a table needs new models.
#include "shortenings.hpp"

#include <algorithm>
#include <unordered_map>

namespace VX::Dialog::fennel {
namespace {

using std::string_view;

void add_without_apostrophes(string_view word, StemList& stems) {
  if (word.find('\'') == string_view::npos) {
    stems.add(word);
    return;
  }
  std::string joined(word);
  std::erase(joined, '\'');
  stems.add(joined);
}

// ---- English

struct TwoWords {
  string_view first;
  string_view second;
};

// Whole words. Those without an apostrophe are what people type in a hurry; forms that are words
// of their own ("its", "ill", "were", "id") are not among them.
const std::unordered_map<string_view, TwoWords>& english_words() {
  static const auto& table = *new std::unordered_map<string_view, TwoWords>{
      {"cannot", {"can", "not"}},  {"let's", {"let", "us"}},        {"y'all", {"you", "all"}},
      {"arent", {"are", "not"}},   {"cant", {"can", "not"}},        {"couldnt", {"could", "not"}},
      {"didnt", {"did", "not"}},   {"doesnt", {"does", "not"}},     {"dont", {"do", "not"}},
      {"hadnt", {"had", "not"}},   {"hasnt", {"has", "not"}},       {"havent", {"have", "not"}},
      {"isnt", {"is", "not"}},     {"shouldnt", {"should", "not"}}, {"wasnt", {"was", "not"}},
      {"werent", {"were", "not"}}, {"wont", {"will", "not"}},       {"wouldnt", {"would", "not"}},
      {"im", {"i", "am"}},         {"ive", {"i", "have"}},          {"thats", {"that", "is"}},
      {"theyre", {"they", "are"}}, {"whats", {"what", "is"}},       {"youre", {"you", "are"}},
  };
  return table;
}

struct Replacement {
  string_view from;
  string_view to;
};

constexpr Replacement kEnglishEndings[] = {
    {"n't", "not"},  {"'m", "am"},    {"'re", "are"}, {"'ve", "have"},
    {"'ll", "will"}, {"'d", "would"}, {"'s", ""},
};

// What is left of a word without "n't".
constexpr Replacement kEnglishNegated[] = {
    {"ca", "can"},
    {"wo", "will"},
    {"sha", "shall"},
    {"ai", "is"},
};

// After these "'s" means "is"; after any other word it marks a possessor.
constexpr string_view kBeforeIs[] = {"it",   "he",  "she",  "that",  "this", "there", "here",
                                     "what", "who", "when", "where", "why",  "how"};

template <typename Table>
const Replacement* find_replacement(const Table& table, string_view word) {
  const auto found = std::find_if(std::begin(table), std::end(table),
                                  [&](const Replacement& entry) { return entry.from == word; });
  return found != std::end(table) ? &*found : nullptr;
}

const Replacement* find_english_ending(string_view word) {
  const auto found =
      std::find_if(std::begin(kEnglishEndings), std::end(kEnglishEndings),
                   [&](const Replacement& ending) { return word.ends_with(ending.from); });
  return found != std::end(kEnglishEndings) ? &*found : nullptr;
}

// "couldn't've": endings are cut off from the right, and their words follow the rest in the order
// of the text.
void add_contraction(string_view word, StemList& stems) {
  std::vector<string_view> endings;
  while (const Replacement* ending = find_english_ending(word)) {
    word.remove_suffix(ending->from.size());
    if (ending->from == "'s") {
      const bool means_is =
          std::find(std::begin(kBeforeIs), std::end(kBeforeIs), word) != std::end(kBeforeIs);
      endings.push_back(means_is ? "is" : "");
      continue;
    }
    endings.push_back(ending->to);
    if (ending->from == "n't") {
      const Replacement* negated = find_replacement(kEnglishNegated, word);
      word = negated != nullptr ? negated->to : word;
    }
  }
  add_without_apostrophes(word, stems);
  std::for_each(endings.rbegin(), endings.rend(), [&](string_view ending) { stems.add(ending); });
}

// ---- French

constexpr Replacement kElisions[] = {
    {"l", "le"},           {"d", "de"},           {"j", "je"},           {"m", "me"},
    {"t", "te"},           {"s", "se"},           {"c", "ce"},           {"\u00E7", "ce"},
    {"n", "ne"},           {"qu", "que"},         {"jusqu", "jusque"},   {"lorsqu", "lorsque"},
    {"puisqu", "puisque"}, {"quoiqu", "quoique"}, {"quelqu", "quelque"},
};

bool is_hyphen(char16_t unit) {
  return unit == u'-' || unit == u'\u2010';
}

void replace_all(std::string& text, string_view from, string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
    text.replace(at, from.size(), to);
  }
}

void add_french_part(string_view word, StemList& stems) {
  const bool has_ligature =
      word.find("\u0153") != string_view::npos || word.find("\u00E6") != string_view::npos;
  if (!has_ligature) {
    add_without_apostrophes(word, stems);
    return;
  }
  std::string spelled_out(word);
  replace_all(spelled_out, "\u0153", "oe");
  replace_all(spelled_out, "\u00E6", "ae");
  add_without_apostrophes(spelled_out, stems);
}

}  // namespace

void add_english(const Word& word, StemList& stems) {
  // The rest of "1990's" and "U.S.'s".
  if (word.text == "s" && word.before == u'\'') {
    return;
  }
  const auto& whole_words = english_words();
  if (const auto found = whole_words.find(word.text); found != whole_words.end()) {
    stems.add(found->second.first);
    stems.add(found->second.second);
  } else if (word.text.find('\'') != std::string::npos) {
    add_contraction(word.text, stems);
  } else {
    stems.add(word.text);
  }
}

void add_french(const Word& word, StemList& stems) {
  if (word.text == "t" && is_hyphen(word.before) && is_hyphen(word.after)) {
    return;
  }
  string_view rest = word.text;
  for (std::size_t at = rest.find('\''); at != string_view::npos; at = rest.find('\'')) {
    const Replacement* elision = find_replacement(kElisions, rest.substr(0, at));
    if (elision == nullptr) {
      break;
    }
    rest.remove_prefix(at + 1);
    const bool is_if = elision->from == "s" && (rest == "il" || rest == "ils");
    stems.add(is_if ? "si" : elision->to);
  }
  add_french_part(rest, stems);
}

void add_unchanged(const Word& word, StemList& stems) {
  stems.add(word.text);
}

}  // namespace VX::Dialog::fennel
