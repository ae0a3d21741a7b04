#include "number-text.hpp"

#include <charconv>
#include <istream>
#include <locale>
#include <streambuf>
#include <system_error>

namespace VX::Dialog::detail {

namespace {

// A stream buffer over text that it does not own.
class TextBuffer : public std::streambuf {
 public:
  TextBuffer(const char* begin, const char* end) {
    char* first = const_cast<char*>(begin);  // only ever read
    setg(first, first, first + (end - begin));
  }
};

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// Signs other than a minus, words such as "inf", and bare points are left to the stream.
bool starts_like_a_number(const char* next, const char* end) {
  if (*next == '-') {
    ++next;
  }
  return next != end && is_digit(*next);
}

std::from_chars_result parse(const char* next, const char* end, int& value) {
  return std::from_chars(next, end, value);
}

std::from_chars_result parse(const char* next, const char* end, double& value) {
  return std::from_chars(next, end, value, std::chars_format::general);
}

}  // namespace

struct NumberReader::Stream {
  Stream(const char* begin, const char* end) : buffer(begin, end), in(&buffer) {
    in.imbue(std::locale::classic());
  }
  TextBuffer buffer;
  std::istream in;
};

NumberReader::NumberReader(std::string_view text)
    : next_(text.data()), end_(text.data() + text.size()) {}

NumberReader::~NumberReader() = default;

template <typename Number>
bool NumberReader::read_number(Number& value) {
  if (failed_) {
    return false;
  }
  if (stream_) {
    return read_from_stream(value);
  }
  while (next_ != end_ && is_white_space(*next_)) {
    ++next_;
  }
  if (next_ == end_) {
    failed_ = ended_ = true;
    return false;
  }
  if (starts_like_a_number(next_, end_)) {
    Number number{};
    const auto [after, error] = parse(next_, end_, number);
    if (error == std::errc() && (after == end_ || is_white_space(*after))) {
      next_ = after;
      value = number;
      return true;
    }
  }
  stream_ = std::make_unique<Stream>(next_, end_);
  return read_from_stream(value);
}

template <typename Number>
bool NumberReader::read_from_stream(Number& value) {
  if ((stream_->in >> std::ws).eof()) {
    failed_ = ended_ = true;
    return false;
  }
  failed_ = !(stream_->in >> value);
  return !failed_;
}

bool NumberReader::read(int& value) {
  return read_number(value);
}

bool NumberReader::read(double& value) {
  return read_number(value);
}

std::vector<double> numbers_of(std::string_view line, std::size_t expected) {
  std::vector<double> values;
  values.reserve(expected);
  NumberReader numbers(line);
  for (double value = 0.0; numbers.read(value);) {
    values.push_back(value);
  }
  return values;
}

void append_number(std::string& text, int value) {
  char digits[16];
  const auto written = std::to_chars(std::begin(digits), std::end(digits), value);
  text.append(digits, written.ptr);
}

void append_number(std::string& text, double value, int significant_digits) {
  char digits[64];
  const auto written = std::to_chars(std::begin(digits), std::end(digits), value,
                                     std::chars_format::general, significant_digits);
  text.append(digits, written.ptr);
}

}  // namespace VX::Dialog::detail
