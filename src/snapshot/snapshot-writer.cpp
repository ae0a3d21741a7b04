// Writes snapshots, and the texts they are made of. Tested by tests/snapshot/snapshot-test.cpp.
#include <boost/algorithm/string/join.hpp>
#include <boost/range/adaptor/transformed.hpp>
#include <fstream>
#include <type_traits>
#include <velmora/snapshot.hpp>

#include "../support/checked-lookup.hpp"
#include "../support/number-text.hpp"

namespace VX::Dialog {

namespace {

// A vector takes a thousand numbers, so they go straight into the record's text.
void append_vector(std::string& text, const std::vector<double>& values) {
  for (std::size_t d = 0; d != values.size(); ++d) {
    if (d != 0) {
      text += ' ';
    }
    detail::append_number(text, values[d]);
  }
}

}  // namespace

void write_ls(const std::vector<std::vector<double>>& vectors,
              const std::map<int, std::vector<std::string>>& rule_words,
              const std::map<int, int>& rows, const std::string& path) {
  std::map<int, std::vector<int>> ids_of_row;
  for (const auto& [rule_id, row] : rows) {
    ids_of_row[row].push_back(rule_id);
  }
  std::ofstream out(path);
  std::string text;
  for (const auto& [row, rule_ids] : ids_of_row) {
    text = to_string(row) + "\n" + vector2string(rule_ids) + "\n";
    out << text;  // what precedes the lookup stays in the file when the lookup fails
    text = vector2string(detail::checked_lookup(rule_words, rule_ids.front())) + "\n";
    if (row >= 0 && static_cast<std::size_t>(row) < vectors.size()) {
      append_vector(text, vectors[static_cast<std::size_t>(row)]);
    }
    text += '\n';
    out << text;
  }
}

template <typename T>
std::string to_string(const T& value) {
  if constexpr (std::is_same_v<T, std::string>) {
    return value;
  } else {
    std::string text;
    detail::append_number(text, value);
    return text;
  }
}

template <typename T>
std::string vector2string(const std::vector<T>& values) {
  return boost::algorithm::join(values | boost::adaptors::transformed(to_string<T>), " ");
}

template std::string to_string<int>(const int&);
template std::string to_string<double>(const double&);
template std::string to_string<std::string>(const std::string&);
template std::string vector2string<int>(const std::vector<int>&);
template std::string vector2string<double>(const std::vector<double>&);
template std::string vector2string<std::string>(const std::vector<std::string>&);

}  // namespace VX::Dialog
