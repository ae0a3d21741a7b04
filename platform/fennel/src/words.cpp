// ICU's word breaking (Unicode Standard Annex 29, with dictionaries for scripts without blanks)
// cuts the text into pieces, and the rules below find the words of a piece. They look at
// neighbouring characters alone, and where there are only Latin letters a piece never ends inside
// what they keep together. So simple text is one single piece, which is much faster and
// gives the same words.
#include "words.hpp"

#include <new>
#include <string_view>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace VX::Dialog::fennel {
namespace {

// A break iterator keeps every break of the longest run of a script without blanks that it has
// seen, so one that has seen more than this is not kept.
constexpr std::size_t kLongestUsualText = std::size_t{64} << 10;

// A piece of the text, read character by character.
struct Piece {
  std::u16string_view text;  // the whole sentence
  std::size_t begin;
  std::size_t end;

  // The character at `index` and the index after it; {0, end} at the end of the piece.
  std::pair<UChar32, std::size_t> character_at(std::size_t index) const {
    if (index >= end) {
      return {0, end};
    }
    UChar32 character = 0;
    U16_NEXT(text.data(), index, end, character);
    return {character, index};
  }
};

void append_utf8(UChar32 character, std::string& text) {
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  char bytes[U8_MAX_LENGTH];
  std::size_t length = 0;
  U8_APPEND_UNSAFE(bytes, length, character);
  text.append(bytes, length);
}

// Whether the full stop before `index` is between two single letters, as in "u.s.a".
bool is_followed_by_single_letter(const Piece& piece, std::size_t index) {
  const auto [letter, after_letter] = piece.character_at(index);
  if (!is_letter(letter)) {
    return false;
  }
  const auto [next, after_next] = piece.character_at(after_letter);
  const bool goes_on_after_apostrophe =
      next == '\'' && is_letter(piece.character_at(after_next).first);
  return !continues_word(next) && !goes_on_after_apostrophe;
}

// Reads the word that begins at `index`; returns the index after it.
std::size_t read_word(const Piece& piece, std::size_t index, std::string& word) {
  UChar32 previous = 0;
  // Characters since the last full stop of an abbreviation, while it may be one.
  int run_length = 0;
  bool has_apostrophe = false;
  while (index < piece.end) {
    const auto [character, after] = piece.character_at(index);
    if (continues_word(character)) {
      append_utf8(character, word);
      ++run_length;
    } else if (character == '\'') {
      if (!is_letter_or_mark(previous) || !is_letter(piece.character_at(after).first)) {
        break;
      }
      word += '\'';
      has_apostrophe = true;
    } else if (character == '.' || character == ',') {
      if (is_digit(previous) && is_digit(piece.character_at(after).first)) {
        append_utf8(character, word);
      } else if (character == '.' && run_length == 1 && !has_apostrophe && is_letter(previous) &&
                 is_followed_by_single_letter(piece, after)) {
        run_length = 0;
      } else {
        break;
      }
    } else {
      break;
    }
    previous = character;
    index = after;
  }
  return index;
}

void split_piece(const Piece& piece, AddWord add_word, StemList& stems) {
  Word word;
  std::size_t index = piece.begin;
  while (index < piece.end) {
    const auto [character, after] = piece.character_at(index);
    if (!starts_word(character)) {
      index = after;
      continue;
    }
    word.text.clear();
    word.before = index > 0 ? piece.text[index - 1] : u'\0';
    index = read_word(piece, index, word.text);
    word.after = index < piece.text.size() ? piece.text[index] : u'\0';
    add_word(word, stems);
  }
}

}  // namespace

void WordSplitter::split(const NormalizedText& normalized, AddWord add_word, StemList& stems) {
  const icu::UnicodeString& text = normalized.text;
  const std::u16string_view units(text.getBuffer(), static_cast<std::size_t>(text.length()));
  if (!normalized.is_simple && break_iterator_ == nullptr) {
    UErrorCode status = U_ZERO_ERROR;
    break_iterator_.reset(icu::BreakIterator::createWordInstance(icu::Locale(locale_), status));
    if (status == U_MEMORY_ALLOCATION_ERROR) {
      throw std::bad_alloc();
    }
  }
  if (normalized.is_simple || break_iterator_ == nullptr) {
    split_piece({units, 0, units.size()}, add_word, stems);
    return;
  }
  break_iterator_->setText(text);
  std::int32_t begin = break_iterator_->first();
  for (std::int32_t end = break_iterator_->next(); end != icu::BreakIterator::DONE;
       end = break_iterator_->next()) {
    split_piece({units, static_cast<std::size_t>(begin), static_cast<std::size_t>(end)}, add_word,
                stems);
    begin = end;
  }
  if (units.size() > kLongestUsualText) {
    break_iterator_.reset();
  }
}

}  // namespace VX::Dialog::fennel
