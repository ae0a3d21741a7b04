// The one exception of the second front door. Tested by tests/matcher/files-test.cpp.
#pragma once

#include <stdexcept>

#include <velmora/export.hpp>

namespace velmora {

/// What went wrong with a model, a file or an argument, as a text for people.
///
/// A text about a file begins with its path, followed by the line when there is one
/// ("rules.tsv:7: ..."), and says what was expected. Where several lines of a file are wrong, the
/// text has a line for each of the first ten.
class VELMORA_EXPORT Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace velmora
