// Tells runs of bytes apart by one number.
//
// Used to find repeated documents and to tell whether a checkpoint belongs to a corpus. Tested by
// tools/train/tests/checkpoint-test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>

namespace velmora::trainer {

/// Takes in runs of bytes. Two objects that took in different runs differ with near certainty.
class Fingerprint {
 public:
  void add(const void* bytes, std::size_t size);
  std::uint64_t value() const { return value_; }

 private:
  std::uint64_t value_ = 0x243f6a8885a308d3U;
};

}  // namespace velmora::trainer
