#include "explanation-output.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ostream>

#include "terminal.hpp"

namespace {

struct Row {
  velmora::WordPair pair;
  std::string said;
  std::string rule_says;
};

std::string number_text(double number) {
  char text[32];
  // Adding 0 turns a rounded -0 into 0.
  std::snprintf(text, sizeof text, "%9.3f", std::round(number * 1000) / 1000 + 0.0);
  return text;
}

void add(velmora::WordPair& sum, const velmora::WordPair& pair) {
  sum.latent += pair.latent;
  sum.words += pair.words;
  sum.characters += pair.characters;
}

std::vector<Row> make_rows(const std::vector<velmora::WordPair>& pairs, std::size_t shown) {
  std::vector<Row> rows;
  velmora::WordPair rest;
  velmora::WordPair total;
  for (const velmora::WordPair& pair : pairs) {
    if (rows.size() < shown) {
      rows.push_back(
          {pair, pair.query_word, pair.rule_word.empty() ? "(other rules)" : pair.rule_word});
    } else {
      add(rest, pair);
    }
    add(total, pair);
  }
  if (pairs.size() > shown) {
    rows.push_back({rest, "(" + std::to_string(pairs.size() - shown) + " weaker pairs)", ""});
  }
  rows.push_back({total, "(all together)", ""});
  return rows;
}

}  // namespace

void print_explanation(std::ostream& out, const velmora::Matcher& matcher,
                       const velmora::Explanation& explanation, std::size_t shown) {
  const velmora::Rule& rule = *matcher.find(explanation.id);
  const std::vector<Row> rows = make_rows(explanation.pairs, shown);
  std::size_t said_width = 0;
  for (const Row& row : rows) {
    said_width = std::max(said_width, display_width(row.said));
  }
  out << "rule " << explanation.id << ": " << rule.sentences[explanation.sentence] << "\n\n"
      << "    score   latent    words  letters  " << padded("said", said_width) << "  rule says\n";
  for (const Row& row : rows) {
    out << number_text(row.pair.total()) << number_text(row.pair.latent)
        << number_text(row.pair.words) << number_text(row.pair.characters) << "  ";
    if (row.rule_says.empty()) {
      out << row.said << "\n";
    } else {
      out << padded(row.said, said_width) << "  " << row.rule_says << "\n";
    }
  }
  const char* separator = "\nunknown: ";
  for (const std::string& word : explanation.unknown) {
    out << separator << word;
    separator = ", ";
  }
  out << (explanation.unknown.empty() ? "" : "\n");
}
