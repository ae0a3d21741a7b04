// Numbers in text files: one reader and one writer for all formats.
//
// The reader gives what extraction from a stream gives, at a fraction of its cost; the writer gives
// the bytes of the default stream format. Both go by the classic locale, whatever the host's global
// one is. Used by every file format. Not installed. Tested by tests/support/number-text-test.cpp.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace VX::Dialog::detail {

/// White space as streams see it in the classic locale.
constexpr bool is_white_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Reads numbers one after the other from a text, which must outlive the reader.
///
/// As with a stream, the first failure is final: no later read extracts anything.
class NumberReader {
 public:
  explicit NumberReader(std::string_view text);
  ~NumberReader();
  NumberReader(const NumberReader&) = delete;
  NumberReader& operator=(const NumberReader&) = delete;

  /// True: a number was extracted into `value`. False: at the end of the text, and after an earlier
  /// failure, `value` keeps what it holds; at text that is not a number it becomes 0 (the nearest
  /// limit when the number is too large).
  bool read(int& value);
  bool read(double& value);

  /// True when a read has failed because there was no more text.
  bool ended() const { return ended_; }

 private:
  struct Stream;

  template <typename Number>
  bool read_number(Number& value);
  template <typename Number>
  bool read_from_stream(Number& value);

  const char* next_;
  const char* end_;
  // Takes over at the first token that is not plainly a number, so that every odd text reads as a
  // stream would read it.
  std::unique_ptr<Stream> stream_;
  bool failed_ = false;
  bool ended_ = false;
};

/// The numbers of a line up to the first token that is not a number. `expected` says how many to
/// make room for.
std::vector<double> numbers_of(std::string_view line, std::size_t expected = 0);

/// Appends a value as a stream writes it: six significant digits for a double by
/// default.
void append_number(std::string& text, int value);
void append_number(std::string& text, double value, int significant_digits = 6);

}  // namespace VX::Dialog::detail
