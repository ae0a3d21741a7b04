#include "input-file.hpp"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <system_error>

#include <velmora/error.hpp>

#include "../support/text-file.hpp"
#include "../support/utf8.hpp"

namespace velmora::detail {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) {
    return {};
  }
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

std::string complaint(const fs::path& path, std::size_t line, const std::string& what) {
  return path.string() + ":" + std::to_string(line) + ": " + what;
}

// Collects what is wrong with the lines of a file.
class Complaints {
 public:
  explicit Complaints(const fs::path& path) : path_(path) {}

  void add(std::size_t line, const std::string& what) {
    constexpr std::size_t kTold = 10;
    if (count_++ < kTold) {
      text_ += (text_.empty() ? "" : "\n") + complaint(path_, line, what);
    }
  }
  void throw_if_any() const {
    if (count_ != 0) {
      throw Error(text_);
    }
  }

 private:
  const fs::path& path_;
  std::string text_;
  std::size_t count_ = 0;
};

// What is wrong with a line that should be a record; empty when nothing is.
std::string split_line(std::string_view line, IdLine& record) {
  if (!VX::Dialog::detail::is_utf8(line)) {
    return "ill-formed UTF-8: expected a text in UTF-8";
  }
  const std::size_t tab = line.find('\t');
  if (tab == std::string_view::npos) {
    return "no tab: expected an id, a tab and a sentence";
  }
  record.id = trimmed(line.substr(0, tab));
  record.sentence = trimmed(line.substr(tab));
  return record.sentence.empty() ? "nothing after the tab: expected a sentence" : "";
}

}  // namespace

void fail(const fs::path& path, const std::string& what) {
  throw Error(path.string() + ": " + what);
}

void fail(const fs::path& path, std::size_t line, const std::string& what) {
  throw Error(complaint(path, line, what));
}

std::string read_input(const fs::path& path) {
  std::error_code error;
  if (fs::is_directory(path, error)) {
    fail(path, "is a folder: expected a file");
  }
  errno = 0;
  std::optional<std::string> text = VX::Dialog::detail::read_text_file(path.string());
  if (!text) {
    fail(path, std::string("cannot be read: ") + std::strerror(errno));
  }
  return std::move(*text);
}

std::vector<IdLine> read_id_lines(const fs::path& path,
                                  std::string (*id_fault)(std::string_view id)) {
  const std::string text = read_input(path);
  std::string_view content = text;
  if (content.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    content.remove_prefix(kByteOrderMark.size());
  }
  std::vector<IdLine> records;
  Complaints complaints(path);
  VX::Dialog::detail::LineReader lines(content);
  std::string_view line;
  for (std::size_t number = 1; lines.next(line); ++number) {
    const std::string_view trimmed_line = trimmed(line);
    if (trimmed_line.empty() || trimmed_line.front() == '#') {
      continue;
    }
    IdLine record;
    record.line = number;
    std::string what = split_line(line, record);
    if (what.empty()) {
      what = id_fault(record.id);
    }
    if (what.empty()) {
      records.push_back(std::move(record));
    } else {
      complaints.add(number, what);
    }
  }
  complaints.throw_if_any();
  if (records.empty()) {
    fail(path, "nothing in it: expected lines of an id, a tab and a sentence");
  }
  return records;
}

std::optional<int> int_of(std::string_view text) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) {
    return std::nullopt;
  }
  return number;
}

}  // namespace velmora::detail
