#include "model-loading.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <system_error>

#include "../support/model-files.hpp"
#include "../support/number-text.hpp"
#include "../support/text-file.hpp"
#include "../support/utf8.hpp"
#include "input-file.hpp"

namespace velmora::detail {

namespace fs = std::filesystem;

namespace {

std::string read_model_file(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) {
    fail(path, "is missing: expected a file of the model");
  }
  if (status.type() != fs::file_type::regular) {
    fail(path, "is not a regular file: expected a file of the model");
  }
  return read_input(path);
}

// The tokens of a text, one line after the other, with complaints that name file and line.
class StrictReader {
 public:
  explicit StrictReader(const fs::path& path)
      : path_(path), text_(read_model_file(path)), rest_(text_) {}

  [[noreturn]] void fail_here(const std::string& what) const { fail(path_, line_, what); }
  std::size_t size() const { return text_.size(); }
  std::size_t line() const { return line_; }

  /// The next line, its tokens to be read; `expected` says what a file that ends here lacks.
  void next_line(const std::string& expected) {
    ++line_;
    if (rest_.empty()) {
      fail_here("the file ends: expected " + expected);
    }
    const std::size_t end = rest_.find('\n');
    current_ = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
  }

  bool at_end() const { return rest_.empty(); }

  std::string_view token() {
    const std::string_view found = VX::Dialog::detail::first_token(current_);
    if (!found.empty()) {
      current_.remove_prefix(
          static_cast<std::size_t>(found.data() + found.size() - current_.data()));
    }
    return found;
  }

  int whole_number(const std::string& expected) {
    const std::string_view text = token();
    const std::optional<int> number = int_of(text);
    if (!number) {
      fail_here(quoted(text) + ": expected " + expected);
    }
    return *number;
  }

  double number(const std::string& expected) {
    const std::string_view text = token();
    double value = 0.0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (text.empty() || error != std::errc() || stop != end || !std::isfinite(value)) {
      fail_here(quoted(text) + ": expected " + expected);
    }
    return value;
  }

  void end_line() {
    const std::string_view text = token();
    if (!text.empty()) {
      fail_here(quoted(text) + ": expected the end of the line");
    }
  }

  void end_file() {
    while (!at_end()) {
      next_line("");
      const std::string_view text = token();
      if (!text.empty()) {
        fail_here(quoted(text) + ": expected the end of the file");
      }
    }
  }

 private:
  static std::string quoted(std::string_view text) {
    constexpr std::size_t kShown = 40;
    if (text.empty()) {
      return "nothing";
    }
    return VX::Dialog::detail::is_utf8(text.substr(0, kShown))
               ? "'" + std::string(text.substr(0, kShown)) + "'"
               : "ill-formed text";
  }

  const fs::path& path_;
  std::string text_;
  std::string_view rest_;
  std::string_view current_;
  std::size_t line_ = 0;
};

void read_scalars(const fs::path& path, wordsense_model& model) {
  StrictReader reader(path);
  reader.next_line("the number of dimensions");
  model.dim = reader.whole_number("the number of dimensions, 1 or more");
  if (model.dim < 1) {
    reader.fail_here("expected the number of dimensions, 1 or more");
  }
  reader.end_line();
  reader.next_line("lambda");
  model.lambda = reader.number("lambda, a number above 0");
  if (model.lambda <= 0.0) {
    reader.fail_here("expected lambda, a number above 0");
  }
  reader.end_line();
  reader.next_line("the weight of missing words");
  model.missing_weight = reader.number("the weight of missing words, from 0 to 1");
  if (model.missing_weight < 0.0 || model.missing_weight > 1.0) {
    reader.fail_here("expected the weight of missing words, from 0 to 1");
  }
  reader.end_line();
  reader.end_file();
}

void read_dictionary(const fs::path& path, ModelData& model) {
  StrictReader reader(path);
  for (int word_id = 0; !reader.at_end(); ++word_id) {
    reader.next_line("a word");
    const std::string_view word = reader.token();
    if (word.empty()) {
      reader.fail_here("blank line: expected a word");
    }
    if (!VX::Dialog::detail::is_utf8(word)) {
      reader.fail_here("ill-formed UTF-8: expected a word in UTF-8");
    }
    reader.end_line();
    const auto before = model.vocabulary.size();
    model.vocabulary.emplace_hint(model.vocabulary.end(), word, word_id);
    if (model.vocabulary.size() == before) {
      reader.fail_here("'" + std::string(word) + "' comes twice: expected another word");
    }
  }
  if (model.vocabulary.empty()) {
    fail(path, "nothing in it: expected a word on each line");
  }
}

void read_idf(const fs::path& path, ModelData& model) {
  StrictReader reader(path);
  const std::size_t word_count = model.vocabulary.size();
  const std::string in_all = " (the dictionary has " + std::to_string(word_count) + " words)";
  model.idf.assign(word_count, 0.0);
  std::vector<bool> seen(word_count);
  for (std::size_t count = 0; count != word_count; ++count) {
    reader.next_line("a word id and its idf" + in_all);
    const int word_id = reader.whole_number("a word id");
    if (word_id < 0 || static_cast<std::size_t>(word_id) >= word_count) {
      reader.fail_here("word id " + std::to_string(word_id) + ": expected one below " +
                       std::to_string(word_count) + in_all);
    }
    const auto place = static_cast<std::size_t>(word_id);
    if (seen[place]) {
      reader.fail_here("word id " + std::to_string(word_id) + " comes twice: expected each once");
    }
    seen[place] = true;
    model.idf[place] = reader.number("the idf of the word, a finite number");
    reader.end_line();
  }
  reader.end_file();
  model.rarest_idf = *std::max_element(model.idf.begin(), model.idf.end());
}

void read_factors(const fs::path& path, ModelData& model) {
  StrictReader reader(path);
  const std::size_t word_count = model.vocabulary.size();
  const auto dim = static_cast<std::size_t>(model.factors.dim);
  reader.next_line("the number of words and the number of dimensions");
  const int columns = reader.whole_number("the number of words");
  if (columns < 0 || static_cast<std::size_t>(columns) != word_count) {
    reader.fail_here(std::to_string(columns) + " words: expected " + std::to_string(word_count) +
                     ", as many as the dictionary has");
  }
  const int rows = reader.whole_number("the number of dimensions");
  if (rows != model.factors.dim) {
    reader.fail_here(std::to_string(rows) + " dimensions: expected " + std::to_string(dim) +
                     ", as the file \"model\" says");
  }
  reader.end_line();
  // A value takes two characters at least. Asked before anything is allocated for them.
  if (reader.size() / 2 / dim < word_count) {
    reader.fail_here("the file is too short: expected " + std::to_string(word_count) +
                     " lines of " + std::to_string(dim) + " numbers");
  }
  model.factors.word_factors.resize(rows, columns);
  const std::string expected = std::to_string(dim) + " finite numbers";
  for (Eigen::Index column = 0; column != columns; ++column) {
    reader.next_line("the factors of " + std::to_string(word_count) + " words");
    for (Eigen::Index row = 0; row != rows; ++row) {
      model.factors.word_factors(row, column) = reader.number(expected);
    }
    reader.end_line();
  }
  reader.end_file();
}

}  // namespace

void load_tables(ModelData& model) {
  using namespace VX::Dialog::detail;
  std::error_code error;
  if (!fs::is_directory(model.directory, error)) {
    fail(model.directory, "is not a folder: expected one with the files of a model");
  }
  read_scalars(model.directory / kModelFile, model.factors);
  read_dictionary(model.directory / kDictionaryFile, model);
  read_idf(model.directory / kIdfFile, model);
  read_factors(model.directory / kFactorsFile, model);
  model.word_gram = VX::Dialog::detail::compute_word_gram(model.factors);
  model.gram_inverse = VX::Dialog::detail::GramInverse(model.word_gram, model.factors.lambda);
}

}  // namespace velmora::detail
