// From normalised text to words, the same for all languages that write letters.
//
// Used by the stemmer. Not installed. Tested through the stemmer by
// platform/fennel/tests/stemmer-test.cpp.
#pragma once

#include <memory>
#include <string>

#include <unicode/brkiter.h>

#include "stem-list.hpp"
#include "text.hpp"

namespace VX::Dialog::fennel {

struct Word {
  /// UTF-8: letters, numbers and their marks; also apostrophes between letters, and the full stops
  /// and commas of a number.
  std::string text;
  /// The UTF-16 code units next to it, 0 at the ends of the sentence.
  char16_t before = 0;
  char16_t after = 0;
};

/// Puts the stems of a word into a list, by the rules of a language.
using AddWord = void (*)(const Word& word, StemList& stems);

/// Finds words. Keeps its break iterator from call to call.
class WordSplitter {
 public:
  /// locale  whose rules ICU's word breaking follows, where it is needed at all
  explicit WordSplitter(const char* locale) : locale_(locale) {}

  /// Passes the words of a text to `add_word` in their order.
  void split(const NormalizedText& normalized, AddWord add_word, StemList& stems);

 private:
  const char* locale_;
  std::unique_ptr<icu::BreakIterator> break_iterator_;  // created when first needed
};

}  // namespace VX::Dialog::fennel
