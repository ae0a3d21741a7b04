#include "utf8.hpp"

namespace {

/// Well-formed characters of more than one byte by their first byte (The Unicode Standard, table
/// 3-7). All bytes after the second are from 80 to BF.
struct Form {
  unsigned char least_first;
  unsigned char greatest_first;
  unsigned char least_second;
  unsigned char greatest_second;
  std::size_t length;
};

constexpr Form kForms[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

bool has_form(std::string_view text, const Form& form) {
  const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(text[place]); };
  if (byte(0) < form.least_first || byte(0) > form.greatest_first || text.size() < form.length ||
      byte(1) < form.least_second || byte(1) > form.greatest_second) {
    return false;
  }
  for (std::size_t place = 2; place != form.length; ++place) {
    if (byte(place) < 0x80 || byte(place) > 0xBF) {
      return false;
    }
  }
  return true;
}

/// Bytes of the character at the start of the text; 0 when it is ill-formed.
std::size_t first_length(std::string_view text) {
  if (static_cast<unsigned char>(text.front()) < 0x80) {
    return 1;
  }
  for (const Form& form : kForms) {
    if (has_form(text, form)) {
      return form.length;
    }
  }
  return 0;
}

}  // namespace

std::string why_not_text(std::string_view bytes) {
  if (bytes.find('\0') != std::string_view::npos) {
    return "a zero byte (is it a binary file?)";
  }
  while (!bytes.empty()) {
    const std::size_t length = first_length(bytes);
    if (length == 0) {
      return "ill-formed UTF-8";
    }
    bytes.remove_prefix(length);
  }
  return {};
}
