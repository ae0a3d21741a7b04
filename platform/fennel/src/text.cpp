#include "text.hpp"

#include <algorithm>
#include <new>

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace VX::Dialog::fennel {
namespace {

constexpr std::size_t kLongestSentence = std::size_t{256} << 20;

// Marks beyond this in a row are dropped, as in the Stream-Safe Text Format (Unicode Standard
// Annex 15): putting a long run in its canonical order takes time of the square of its length.
constexpr int kMostMarksInARow = 30;

constexpr char16_t kApostrophe = u'\'';

bool is_apostrophe(char16_t unit) {
  switch (unit) {
    case kApostrophe:
    case u'`':
    case u'\u02BC':  // modifier letter apostrophe
    case u'\u2018':  // quotation marks
    case u'\u2019':
    case u'\u201B':
    case u'\u2032':  // prime
      return true;
    default:
      return false;
  }
}

bool is_ascii(std::string_view sentence) {
  return std::all_of(sentence.begin(), sentence.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// The same as the normalisation by ICU, only faster.
icu::UnicodeString normalize_ascii(std::string_view sentence) {
  const auto length = static_cast<std::int32_t>(sentence.size());
  icu::UnicodeString text;
  char16_t* out = text.getBuffer(std::max(length, 1));
  if (out == nullptr) {
    throw std::bad_alloc();
  }
  for (const char byte : sentence) {
    const bool is_upper = byte >= 'A' && byte <= 'Z';
    *out++ = byte == '`' ? kApostrophe : static_cast<char16_t>(is_upper ? byte - 'A' + 'a' : byte);
  }
  text.releaseBuffer(length);
  return text;
}

// Null when ICU has no data for it. Owned by ICU; looked up once.
const icu::Normalizer2* nfkc_casefold() {
  static const icu::Normalizer2* const normalizer = [] {
    UErrorCode status = U_ZERO_ERROR;
    return icu::Normalizer2::getNFKCCasefoldInstance(status);
  }();
  return normalizer;
}

// Replaces what NFKC would spoil: the acute accent that some type for an apostrophe would become a
// blank and a mark, and the trade mark signs letters of the word before.
char16_t before_nfkc(char16_t unit) {
  switch (unit) {
    case u'\u00B4':
      return kApostrophe;
    case u'\u2120':
    case u'\u2122':
      return u' ';
    default:
      return unit;
  }
}

void prepare(icu::UnicodeString& raw) {
  const std::int32_t length = raw.length();
  char16_t* units = raw.getBuffer(std::max(length, 1));
  if (units == nullptr) {
    throw std::bad_alloc();
  }
  std::int32_t kept = 0;
  int marks_in_a_row = 0;
  for (std::int32_t next = 0; next < length;) {
    const std::int32_t start = next;
    UChar32 character = 0;
    U16_NEXT(units, next, length, character);
    const bool is_mark = character >= 0x300 && u_getCombiningClass(character) != 0;
    marks_in_a_row = is_mark ? marks_in_a_row + 1 : 0;
    if (marks_in_a_row > kMostMarksInARow) {
      continue;
    }
    for (std::int32_t unit = start; unit < next; ++unit) {
      units[kept++] = before_nfkc(units[unit]);
    }
  }
  raw.releaseBuffer(kept);
}

// Below U+0250 there are only Latin letters, and the other range holds no word characters at all.
bool is_simple(char16_t unit) {
  return unit < 0x250 || (unit >= 0x2010 && unit <= 0x205E);
}

// What has to happen after NFKC, which yields apostrophes itself.
bool unify_apostrophes(icu::UnicodeString& text) {
  const std::int32_t length = text.length();
  char16_t* units = text.getBuffer(std::max(length, 1));
  if (units == nullptr) {
    throw std::bad_alloc();
  }
  bool all_simple = true;
  for (std::int32_t unit = 0; unit < length; ++unit) {
    if (is_apostrophe(units[unit])) {
      units[unit] = kApostrophe;
    }
    all_simple = all_simple && is_simple(units[unit]);
  }
  text.releaseBuffer(length);
  return all_simple;
}

constexpr std::uint32_t kAttachedMark = U_GC_MN_MASK | U_GC_MC_MASK;

bool has_category(UChar32 character, std::uint32_t mask) {
  return (U_GET_GC_MASK(character) & mask) != 0;
}

}  // namespace

NormalizedText normalize(std::string_view sentence) {
  sentence = sentence.substr(0, kLongestSentence);
  if (is_ascii(sentence)) {
    return {normalize_ascii(sentence), true};
  }
  icu::UnicodeString raw = icu::UnicodeString::fromUTF8(
      icu::StringPiece(sentence.data(), static_cast<std::int32_t>(sentence.size())));
  prepare(raw);
  NormalizedText result;
  if (const icu::Normalizer2* normalizer = nfkc_casefold()) {
    UErrorCode status = U_ZERO_ERROR;
    normalizer->normalize(raw, result.text, status);
  } else {
    result.text = raw.toLower();  // ICU without its data: the nearest there is
  }
  result.is_simple = unify_apostrophes(result.text);
  return result;
}

bool starts_word(UChar32 character) {
  if (character < 0x80) {
    return is_letter(character) || is_digit(character);
  }
  return has_category(character, U_GC_L_MASK | U_GC_N_MASK);
}

bool continues_word(UChar32 character) {
  return starts_word(character) || (character >= 0x80 && has_category(character, kAttachedMark));
}

bool is_letter_or_mark(UChar32 character) {
  return is_letter(character) || (character >= 0x80 && has_category(character, kAttachedMark));
}

bool is_letter(UChar32 character) {
  if (character < 0x80) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
  }
  return has_category(character, U_GC_L_MASK);
}

bool is_digit(UChar32 character) {
  return character < 0x80 ? character >= '0' && character <= '9' : u_isdigit(character) != 0;
}

bool is_blank(UChar32 character) {
  return u_isUWhiteSpace(character) != 0 || has_category(character, U_GC_CC_MASK);
}

}  // namespace VX::Dialog::fennel
