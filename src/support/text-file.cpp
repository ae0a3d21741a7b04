#include "text-file.hpp"

#include <cerrno>
#include <fstream>
#include <new>

#include <boost/tokenizer.hpp>

#include "number-text.hpp"

namespace VX::Dialog::detail {

namespace {

// Cuts the first token off `rest`; empty when there is none.
std::string_view take_token(std::string_view& rest) {
  std::size_t begin = 0;
  while (begin != rest.size() && is_white_space(rest[begin])) {
    ++begin;
  }
  std::size_t end = begin;
  while (end != rest.size() && !is_white_space(rest[end])) {
    ++end;
  }
  const std::string_view token = rest.substr(begin, end - begin);
  rest.remove_prefix(end);
  return token;
}

}  // namespace

std::optional<std::string> read_text_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    if (errno == ENOMEM) {
      throw std::bad_alloc();  // the file may well be there
    }
    return std::nullopt;
  }
  std::string content;
  std::size_t size = 0;
  std::size_t chunk = 1 << 16;
  do {
    content.resize(size + chunk);
    in.read(content.data() + size, static_cast<std::streamsize>(chunk));
    size += static_cast<std::size_t>(in.gcount());
    chunk = size;
  } while (in);
  content.resize(size);
  return content;
}

bool LineReader::next(std::string_view& line) {
  line = {};
  if (rest_.empty()) {
    return false;
  }
  const std::size_t end = rest_.find('\n');
  line = rest_.substr(0, end);
  rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
  return true;
}

std::string_view first_token(std::string_view line) {
  return take_token(line);
}

std::vector<std::string> tokens_of(std::string_view line) {
  std::vector<std::string> tokens;
  for (std::string_view token = take_token(line); !token.empty(); token = take_token(line)) {
    tokens.emplace_back(token);
  }
  return tokens;
}

std::vector<std::string> corpus_words(const std::string& line) {
  const boost::tokenizer words(line, boost::char_separator<char>(" "));
  return {words.begin(), words.end()};
}

}  // namespace VX::Dialog::detail
