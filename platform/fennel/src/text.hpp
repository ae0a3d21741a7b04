// Normalised text and what its characters are.
//
// Used by the word splitting and by the Japanese analysis. Not installed. Tested through the
// stemmer by platform/fennel/tests/stemmer-test.cpp.
#pragma once

#include <string_view>

#include <unicode/unistr.h>

namespace VX::Dialog::fennel {

struct NormalizedText {
  icu::UnicodeString text;
  /// The words can be found by looking at neighbouring characters alone; ICU's word breaking would
  /// find the same.
  bool is_simple = true;
};

/// NFKC, case folded, without invisible characters. Every kind of apostrophe becomes U+0027, and
/// bytes that are not UTF-8 become U+FFFD.
NormalizedText normalize(std::string_view sentence);

/// Letters and numbers.
bool starts_word(UChar32 character);
/// Letters, numbers and the marks that go with them.
bool continues_word(UChar32 character);
bool is_letter_or_mark(UChar32 character);
bool is_letter(UChar32 character);
bool is_digit(UChar32 character);

/// White space of any kind, and control characters.
bool is_blank(UChar32 character);

}  // namespace VX::Dialog::fennel
