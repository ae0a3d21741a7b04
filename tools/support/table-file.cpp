#include "table-file.hpp"

#include <iostream>
#include <stdexcept>

#include "line-reader.hpp"

namespace {

constexpr const char* kBlanks = " \t\r\n\v\f";

std::string trimmed(const std::string& text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string::npos) {
    return {};
  }
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

std::vector<std::string> split(const std::string& line, std::size_t field_count) {
  std::vector<std::string> fields;
  std::size_t begin = 0;
  while (fields.size() + 1 < field_count) {
    const std::size_t tab = line.find('\t', begin);
    if (tab == std::string::npos) {
      break;
    }
    fields.push_back(trimmed(line.substr(begin, tab - begin)));
    begin = tab + 1;
  }
  fields.push_back(trimmed(line.substr(begin)));
  return fields;
}

/// What is wrong with the fields of a line; empty when nothing is.
std::string fault(const std::vector<std::string>& fields, const std::vector<std::string>& columns) {
  if (fields.size() < columns.size()) {
    return "no tab between " + columns[fields.size() - 1] + " and " + columns[fields.size()];
  }
  for (std::size_t column = 0; column != columns.size(); ++column) {
    if (fields[column].empty()) {
      return "empty " + columns[column];
    }
  }
  return {};
}

}  // namespace

std::string complaint(const std::string& path, int line_number, const std::string& message) {
  return path + ":" + std::to_string(line_number) + ": " + message;
}

Table read_table(const std::string& path, const std::vector<std::string>& columns) {
  Table table;
  try {
    LineReader reader(path);
    for (std::string line; reader.next(line);) {
      const int line_number = static_cast<int>(reader.line_number());
      const std::string content = trimmed(line);
      if (content.empty() || content.front() == '#') {
        continue;
      }
      TableLine record{line_number, split(line, columns.size())};
      const std::string what = fault(record.fields, columns);
      if (what.empty()) {
        table.lines.push_back(std::move(record));
      } else {
        table.errors.push_back(complaint(path, line_number, what));
      }
    }
  } catch (const std::runtime_error& failure) {
    table.errors.push_back(failure.what());
  }
  if (table.lines.empty() && table.errors.empty()) {
    table.errors.push_back(path + ": nothing in the file");
  }
  return table;
}

void print_complaints(const std::vector<std::string>& errors) {
  constexpr std::size_t kShown = 10;
  for (std::size_t shown = 0; shown != errors.size(); ++shown) {
    if (shown == kShown) {
      std::cerr << "... and " << errors.size() - kShown << " more\n";
      return;
    }
    std::cerr << errors[shown] << "\n";
  }
}

bool read_named_sentences(const std::string& path, const std::string& name_column,
                          std::map<std::string, std::vector<std::string>>& sentences) {
  const Table table = read_table(path, {name_column, "sentence"});
  for (const TableLine& line : table.lines) {
    sentences[line.fields[0]].push_back(line.fields[1]);
  }
  print_complaints(table.errors);
  return table.errors.empty();
}
