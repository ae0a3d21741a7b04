#include "idf-table.hpp"

#include <velmora/dictionary.hpp>

#include "../../src/support/model-files.hpp"

std::map<std::string, double> idf_table(const velmora::Model& model) {
  std::string dictionary_path = model.directory() / VX::Dialog::detail::kDictionaryFile;
  std::string idf_path = model.directory() / VX::Dialog::detail::kIdfFile;
  const std::map<int, double> idf = VX::Dialog::load_idf(idf_path);
  std::map<std::string, double> table;
  for (const auto& [stem, word_id] : VX::Dialog::get_word_ids(dictionary_path)) {
    table.emplace(stem, idf.at(word_id));  // there is one: the model has been checked
  }
  return table;
}
