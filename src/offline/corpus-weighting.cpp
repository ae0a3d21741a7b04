#include <fstream>

#include <velmora/dictionary.hpp>
#include <velmora/offline.hpp>

#include "../support/log-site.hpp"
#include "../support/number-text.hpp"
#include "../support/tables.hpp"

namespace VX::Dialog {

using detail::append_number;
using detail::data_format_log;
using detail::IdfTable;
using detail::SentenceWeights;
using detail::tfidf_log;
using zu::log::Level;

void tfidf(std::string corpus_path, std::string idf_path, bool /*tf_flag*/, bool /*idf_flag*/,
           bool /*norm_flag*/, std::string output_path) {
  // Counts and idf always apply, and there is no norm.
  write_data(idf(read_data(corpus_path), idf_path), output_path);
}

std::vector<SentenceWeights> read_data(std::string path) {
  VELMORA_LOG(tfidf_log, Level::info, "read_data") << "computing tfidf";
  std::vector<SentenceWeights> rows;
  std::ifstream in(path);
  std::string line;
  while (std::getline(in, line)) {
    SentenceWeights row;
    detail::NumberReader numbers(line);
    for (int word_id = 0; numbers.read(word_id);) {
      row[word_id] += 1.0;
    }
    rows.push_back(std::move(row));
  }
  VELMORA_LOG(tfidf_log, Level::info, "read_data") << "data size" << rows.size();
  return rows;
}

std::vector<SentenceWeights> idf(const std::vector<SentenceWeights>& rows, std::string idf_path) {
  const IdfTable table = load_idf(idf_path);
  std::vector<SentenceWeights> weighted = rows;
  for (SentenceWeights& row : weighted) {
    for (auto& [word_id, weight] : row) {
      const auto entry = table.find(word_id);
      if (entry != table.end()) {
        weight *= entry->second;
      } else {
        VELMORA_LOG(tfidf_log, Level::info, "idf") << word_id << " does not exist";
      }
    }
  }
  VELMORA_LOG(tfidf_log, Level::info, "idf") << weighted.size() << "\n";
  return weighted;
}

void write_data(const std::vector<SentenceWeights>& rows, std::string path) {
  std::ofstream out(path);
  VELMORA_LOG(tfidf_log, Level::info, "write_data") << " writing to " << path;
  std::string line;
  for (const SentenceWeights& row : rows) {
    line.clear();
    for (const auto& [word_id, weight] : row) {
      append_number(line, word_id);
      line += ' ';
      append_number(line, weight);
      line += ' ';
    }
    line += '\n';
    out << line;
  }
  VELMORA_LOG(tfidf_log, Level::info, "write_data") << "data size " << rows.size();
}

namespace {

int count_numbers(const std::string& line) {
  int count = 0;
  detail::NumberReader numbers(line);
  for (double value = 0.0; numbers.read(value);) {
    ++count;
  }
  return count;
}

}  // namespace

void cpp_data_format(std::string input_path, std::string output_path, int header_value) {
  VELMORA_LOG(data_format_log, Level::info, "cpp_data_format") << "formating data";
  std::ifstream in(input_path);
  std::string body;
  int row_count = 0;
  std::string line;
  while (std::getline(in, line)) {
    append_number(body, count_numbers(line) / 2);
    body += ' ';
    body += line;
    body += '\n';
    ++row_count;
  }
  // Opened only now: input and output may be one file.
  std::ofstream out(output_path);
  std::string header;
  append_number(header, row_count);
  header += ' ';
  append_number(header, header_value);
  out << header << '\n' << body;
}

}  // namespace VX::Dialog
