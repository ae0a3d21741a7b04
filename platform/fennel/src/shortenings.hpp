// What English and French do with a word before it is stemmed.
//
// Used by the stemmer. Not installed. Tested through the stemmer by
// platform/fennel/tests/stemmer-test.cpp.
#pragma once

#include "stem-list.hpp"
#include "words.hpp"

namespace VX::Dialog::fennel {

/// Undoes contractions and drops possessives.
void add_english(const Word& word, StemList& stems);
/// Undoes elisions and ligatures, and drops the t of "a-t-il".
void add_french(const Word& word, StemList& stems);
/// The word as it is.
void add_unchanged(const Word& word, StemList& stems);

}  // namespace VX::Dialog::fennel
