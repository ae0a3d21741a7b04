// Base forms of Japanese words, by MeCab with the IPA dictionary.
//
// Particles, auxiliaries and symbols are left out; digits that follow one another are one number.
// Used by the stemmer. Not installed. Tested by platform/fennel/tests/japanese-test.cpp.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <mecab.h>

#include "stem-list.hpp"
#include "text.hpp"

namespace VX::Dialog::fennel {

/// Opens the first of the dictionaries that works and is what we need: UTF-8, and its features
/// those of the IPA dictionary. Null when none does; that is logged.
///
/// arguments  the options of MeCab's command line, one string for each dictionary
std::unique_ptr<MeCab::Model> open_dictionary(const std::vector<std::string>& arguments);

/// The dictionary of this process, opened at the first call and shared by all threads; null when
/// there is none.
const MeCab::Model* shared_dictionary();

/// One per Stemmer: MeCab's working memory.
class JapaneseAnalyzer {
 public:
  /// `model` must outlive the analyzer.
  explicit JapaneseAnalyzer(const MeCab::Model& model)
      : tagger_(model.createTagger()), lattice_(model.createLattice()) {}

  /// Adds the base forms of the words that carry meaning.
  void add_stems(icu::UnicodeString text, StemList& stems);

 private:
  void add_stems_of_part(const std::string& part, StemList& stems);

  std::unique_ptr<MeCab::Tagger> tagger_;
  std::unique_ptr<MeCab::Lattice> lattice_;
};

}  // namespace VX::Dialog::fennel
