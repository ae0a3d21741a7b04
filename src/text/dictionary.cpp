#include <velmora/dictionary.hpp>

#include "../support/number-text.hpp"
#include "../support/tables.hpp"
#include "../support/text-file.hpp"

namespace VX::Dialog {

using detail::IdfTable;
using detail::Vocabulary;

std::map<std::string, int> get_word_ids(std::string& path) {
  Vocabulary vocabulary;
  const std::string text = detail::read_text_file(path).value_or("");
  detail::LineReader lines(text);
  std::string_view line;
  for (int word_id = 0; lines.next(line); ++word_id) {
    const std::string_view word = detail::first_token(line);
    if (word.empty()) {
      break;
    }
    // Dictionaries are mostly sorted, so the end is the likeliest place. A repeated word keeps the
    // later id.
    vocabulary.insert_or_assign(vocabulary.end(), std::string(word), word_id);
  }
  return vocabulary;
}

IdfTable load_idf(std::string& path) {
  IdfTable idf;
  const std::string text = detail::read_text_file(path).value_or("");
  detail::LineReader lines(text);
  std::string_view line;
  while (lines.next(line)) {
    detail::NumberReader numbers(line);
    int word_id = 0;
    double value = 0.0;
    if (!numbers.read(word_id) || !numbers.read(value)) {
      break;
    }
    idf.insert_or_assign(idf.end(), word_id, value);
  }
  return idf;
}

}  // namespace VX::Dialog
