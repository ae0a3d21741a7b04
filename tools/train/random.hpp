// Random numbers that are the same with every compiler and on every machine.
//
// Used for the first word factors and for words that a teacher hardly taught. The generator is
// splitmix64 (G. Steele, D. Lea, C. Flood, "Fast Splittable Pseudorandom Number Generators", OOPSLA
// 2014), read at a position instead of stepped, so that the order of drawing does not matter.
// Nothing here calls the mathematics library. Tested by tools/train/tests/factorisation-test.cpp.
#pragma once

#include <cstdint>

namespace velmora::trainer {

/// The bits at one position of the stream of one start value.
constexpr std::uint64_t random_bits(std::uint64_t start, std::uint64_t position) {
  std::uint64_t bits = start + (position + 1) * 0x9e3779b97f4a7c15U;
  bits = (bits ^ (bits >> 30U)) * 0xbf58476d1ce4e5b9U;
  bits = (bits ^ (bits >> 27U)) * 0x94d049bb133111ebU;
  return bits ^ (bits >> 31U);
}

/// Nearly normal, mean 0 and variance 1: the sum of twelve uniform numbers of 16 bits each, less 6.
/// A sum of integers, hence exact.
constexpr float random_normal(std::uint64_t start, std::uint64_t position) {
  std::int64_t sum = -6 * 65536;
  for (std::uint64_t draw = 0; draw != 3; ++draw) {
    const std::uint64_t bits = random_bits(start, 3 * position + draw);
    for (unsigned shift = 0; shift != 64; shift += 16) {
      sum += static_cast<std::int64_t>((bits >> shift) & 0xffffU);
    }
  }
  return static_cast<float>(sum) / 65536.0F;
}

}  // namespace velmora::trainer
