// From a sentence to the stems of its words. Tested by platform/fennel/tests/stemmer-test.cpp.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <fennel/export.hpp>

namespace VX::Dialog {

/// Stems of one language. Models are built from these stems, so the same sentence gives the same
/// stems from release to release; the rules are in platform/fennel/README.md.
///
/// One Stemmer serves one thread at a time; different objects may work at the same time.
class FENNEL_EXPORT Stemmer {
 public:
  /// language  "enu" English, "frf" French, "jpj" Japanese; any other code gets words that are
  ///           normalised and lower-cased but not stemmed
  ///
  /// Without a Japanese dictionary on the machine "jpj" gets words without base forms, and one
  /// warning goes to the log category "Fennel.Stemmer". Throws only std::bad_alloc.
  explicit Stemmer(const std::string& language);
  ~Stemmer();

  /// sentence  UTF-8 of any length (what lies beyond 256 MB is left out); ill-formed bytes and
  ///           control characters separate words
  /// stems     out: replaced by the stems in the order of the sentence, repeats included; none is
  ///           empty or holds white space
  ///
  /// A megabyte takes some 50 ms and, without the stems, 10 MB of memory, which is given back. A
  /// Japanese megabyte without a blank or punctuation mark may take a second: where a word may
  /// begin, MeCab looks at the whole run of letters, digits or symbols, up to 1024 bytes. A host
  /// that takes sentences from strangers should limit their length.
  ///
  /// Throws only std::bad_alloc.
  void stem_sentence(const std::string& sentence, std::vector<std::string>& stems);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace VX::Dialog
