// The list that the languages put their stems into.
//
// Used by the stemmer. Not installed. Tested through the stemmer by
// platform/fennel/tests/stemmer-test.cpp.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <libstemmer.h>

namespace VX::Dialog::fennel {

struct SnowballDeleter {
  void operator()(sb_stemmer* snowball) const { sb_stemmer_delete(snowball); }
};
using Snowball = std::unique_ptr<sb_stemmer, SnowballDeleter>;

/// Replaces the content of a list of stems, reusing the strings that it has.
class StemList {
 public:
  /// snowball  null: words stay as they are
  StemList(std::vector<std::string>& stems, sb_stemmer* snowball)
      : stems_(stems), snowball_(snowball) {}

  /// An empty word is left out.
  void add(std::string_view word);
  /// Drops what the list held before; call once, at the end.
  void finish() { stems_.resize(count_); }

 private:
  std::vector<std::string>& stems_;
  sb_stemmer* snowball_;
  std::size_t count_ = 0;
};

}  // namespace VX::Dialog::fennel
