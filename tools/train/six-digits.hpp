// Numbers with six significant digits, as the text files of the library hold them.
//
// A weight that goes through a file loses its other digits. The trainer keeps weights in memory and
// rounds them alike, so that its matrix is the one that the library's offline tools make of the
// same corpus. Used by vocabulary.cpp and weighting.cpp. Tested by
// tools/train/tests/corpus-test.cpp.
#pragma once

#include <charconv>
#include <string>

namespace velmora::trainer {

/// A finite number as the default format of a stream writes it.
inline std::string six_digit_text(double number) {
  char text[32];
  const std::to_chars_result result =
      std::to_chars(text, text + sizeof text, number, std::chars_format::general, 6);
  return {text, result.ptr};
}

/// What a reader makes of that text.
inline double to_six_digits(double number) {
  const std::string text = six_digit_text(number);
  double rounded = 0.0;
  (void)std::from_chars(text.data(), text.data() + text.size(), rounded);  // it is a number
  return rounded;
}

}  // namespace velmora::trainer
