#include <fstream>

#include <velmora/snapshot.hpp>

#include "../support/checked-lookup.hpp"
#include "../support/number-text.hpp"
#include "../support/tables.hpp"

namespace VX::Dialog {

using detail::RowTable;
using detail::RuleTable;
using detail::VectorTable;

namespace {

void append_value(std::string& text, const std::string& value) {
  text += value;
}
void append_value(std::string& text, int value) {
  detail::append_number(text, value);
}
void append_value(std::string& text, double value) {
  detail::append_number(text, value);
}

template <typename T>
void append_joined(std::string& text, const std::vector<T>& values) {
  const char* separator = "";
  for (const T& value : values) {
    text += separator;
    append_value(text, value);
    separator = " ";
  }
}

}  // namespace

void write_ls(const VectorTable& vectors, const RuleTable& rule_words, const RowTable& rows,
              const std::string& path) {
  std::map<int, std::vector<int>> ids_of_row;
  for (const auto& [rule_id, row] : rows) {
    ids_of_row[row].push_back(rule_id);
  }
  std::ofstream out(path);
  std::string text;
  for (const auto& [row, rule_ids] : ids_of_row) {
    text.clear();
    append_value(text, row);
    text += '\n';
    append_joined(text, rule_ids);
    text += '\n';
    out << text;  // what precedes the lookup stays in the file when the lookup fails
    text.clear();
    append_joined(text, detail::checked_lookup(rule_words, rule_ids.front()));
    text += '\n';
    if (row >= 0 && static_cast<std::size_t>(row) < vectors.size()) {
      append_joined(text, vectors[static_cast<std::size_t>(row)]);
    }
    text += '\n';
    out << text;
  }
}

template <typename T>
std::string to_string(const T& value) {
  std::string text;
  append_value(text, value);
  return text;
}

template <typename T>
std::string vector2string(const std::vector<T>& values) {
  std::string text;
  append_joined(text, values);
  return text;
}

template std::string to_string<int>(const int&);
template std::string to_string<double>(const double&);
template std::string to_string<std::string>(const std::string&);
template std::string vector2string<int>(const std::vector<int>&);
template std::string vector2string<double>(const std::vector<double>&);
template std::string vector2string<std::string>(const std::vector<std::string>&);

}  // namespace VX::Dialog
