#include <fstream>

#include <velmora/dictionary.hpp>
#include <velmora/offline.hpp>

#include "../support/checked-lookup.hpp"
#include "../support/log-site.hpp"
#include "../support/number-text.hpp"
#include "../support/tables.hpp"
#include "../support/text-file.hpp"

namespace VX::Dialog {

using detail::index_word_log;
using detail::Vocabulary;
using zu::log::Level;

std::map<std::string, int> indexwords(std::string dictionary_path) {
  Vocabulary vocabulary = get_word_ids(dictionary_path);
  VELMORA_LOG(index_word_log, Level::info, "indexwords") << "map size" << vocabulary.size();
  return vocabulary;
}

int index(std::string corpus_path, std::string output_path, std::string dictionary_path) {
  VELMORA_LOG(index_word_log, Level::info, "index") << "indexing text data";
  std::ifstream in(corpus_path);
  std::ofstream out(output_path);
  const Vocabulary vocabulary = indexwords(dictionary_path);
  std::string line;
  std::string ids;
  while (std::getline(in, line)) {
    for (const std::string& word : detail::corpus_words(line)) {
      ids.clear();
      // The dictionary has to cover the corpus: a word outside it ends the operation here.
      detail::append_number(ids, detail::checked_lookup(vocabulary, word));
      out << ids << ' ';
    }
    out << '\n';
  }
  return static_cast<int>(vocabulary.size());
}

void rm_infreq(std::string input_path, std::string output_path, int /*threshold*/) {
  // The pass keeps every word, so nothing is counted against the threshold.
  std::ifstream in(input_path);
  std::string normal_form;
  std::string line;
  while (std::getline(in, line)) {
    for (const std::string& word : detail::corpus_words(line)) {
      normal_form += word;
      normal_form += ' ';
    }
    normal_form += '\n';
  }
  // Opened only now: input and output may be one file.
  std::ofstream(output_path) << normal_form;
}

}  // namespace VX::Dialog
