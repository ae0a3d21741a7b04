#include "utf8.hpp"

#include <cstddef>

namespace VX::Dialog::detail {

namespace {

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

// Cuts the first character off `rest`; false where there is none.
bool take_character(std::string_view& rest) {
  const Lead lead = lead_of(static_cast<unsigned char>(rest.front()));
  if (lead.length == 0 || lead.length > rest.size()) {
    return false;
  }
  char32_t character = lead.bits;
  for (std::size_t i = 1; i != lead.length; ++i) {
    const auto byte = static_cast<unsigned char>(rest[i]);
    if ((byte & 0xC0U) != 0x80U) {
      return false;
    }
    character = (character << 6U) | (byte & 0x3FU);
  }
  rest.remove_prefix(lead.length);
  const bool is_surrogate = character >= 0xD800 && character < 0xE000;
  return character >= lead.smallest && character <= 0x10FFFF && !is_surrogate;
}

}  // namespace

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    if (!take_character(text)) {
      return false;
    }
  }
  return true;
}

}  // namespace VX::Dialog::detail
