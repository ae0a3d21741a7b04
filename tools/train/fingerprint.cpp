#include "fingerprint.hpp"

#include <algorithm>
#include <cstring>

#include "random.hpp"

namespace velmora::trainer {

void Fingerprint::add(const void* bytes, std::size_t size) {
  const char* next = static_cast<const char*>(bytes);
  value_ = random_bits(value_, size);
  for (std::size_t left = size; left != 0;) {
    std::uint64_t word = 0;
    const std::size_t step = std::min(left, sizeof word);
    std::memcpy(&word, next, step);
    value_ = random_bits(value_ ^ word, 0);
    next += step;
    left -= step;
  }
}

}  // namespace velmora::trainer
