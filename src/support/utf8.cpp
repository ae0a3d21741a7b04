#include "utf8.hpp"

#include <cstddef>

namespace VX::Dialog::detail {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kIllFormed = 0xFFFFFFFF;

// What a first byte says about its character. The smallest value tells overlong forms.
struct Lead {
  std::size_t length;
  char32_t bits;
  char32_t smallest;
};

Lead lead_of(unsigned char byte) {
  if (byte < 0x80) {
    return {1, byte, 0};
  }
  if (byte >= 0xC0 && byte < 0xE0) {
    return {2, byte & 0x1FU, 0x80};
  }
  if (byte >= 0xE0 && byte < 0xF0) {
    return {3, byte & 0x0FU, 0x800};
  }
  if (byte >= 0xF0 && byte < 0xF8) {
    return {4, byte & 0x07U, 0x10000};
  }
  return {0, 0, 0};
}

// Cuts the first character off `rest`; one byte and kIllFormed where there is none.
char32_t take_character(std::string_view& rest) {
  const Lead lead = lead_of(static_cast<unsigned char>(rest.front()));
  char32_t character = lead.bits;
  bool well_formed = lead.length != 0 && lead.length <= rest.size();
  for (std::size_t i = 1; well_formed && i < lead.length; ++i) {
    const auto byte = static_cast<unsigned char>(rest[i]);
    well_formed = (byte & 0xC0U) == 0x80U;
    character = (character << 6U) | (byte & 0x3FU);
  }
  const bool is_surrogate = character >= 0xD800 && character < 0xE000;
  if (!well_formed || character < lead.smallest || character > 0x10FFFF || is_surrogate) {
    rest.remove_prefix(1);
    return kIllFormed;
  }
  rest.remove_prefix(lead.length);
  return character;
}

}  // namespace

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    if (take_character(text) == kIllFormed) {
      return false;
    }
  }
  return true;
}

std::u32string characters_of(std::string_view text) {
  std::u32string characters;
  characters.reserve(text.size());
  while (!text.empty()) {
    const char32_t character = take_character(text);
    characters += character == kIllFormed ? kReplacement : character;
  }
  return characters;
}

}  // namespace VX::Dialog::detail
