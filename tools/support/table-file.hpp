// Reads text tables: a line is a record, a tab separates its fields.
//
// The form of rule files, application files and evaluation data. Blank lines and lines that begin
// with '#' are skipped. Used by velmora and velmora-evaluate; tested by
// tools/velmora/tests/commands-test.cpp through the messages of the console.
#pragma once

#include <map>
#include <string>
#include <vector>

struct TableLine {
  /// Where it stands in the file, from 1.
  int number = 0;
  /// Trimmed, none of them empty.
  std::vector<std::string> fields;
};

struct Table {
  std::vector<TableLine> lines;
  /// "path:line: what is wrong", one a bad line; empty for a good file.
  std::vector<std::string> errors;
};

/// Reads a table whose lines have the fields that `columns` names. The last field takes the rest of
/// its line, tabs included. A file that can't be read or has no record is an error like a bad line.
Table read_table(const std::string& path, const std::vector<std::string>& columns);

/// "path:line: message", the form of every complaint about an input file.
std::string complaint(const std::string& path, int line_number, const std::string& message);

/// Sentences by name, in the order of the names: the form of applications and of intents.
/// Complaints go to standard error; false when there was one.
bool read_named_sentences(const std::string& path, const std::string& name_column,
                          std::map<std::string, std::vector<std::string>>& sentences);

/// Writes complaints to standard error, the first ten of them in full.
void print_complaints(const std::vector<std::string>& errors);
