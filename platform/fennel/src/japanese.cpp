#include "japanese.hpp"

#include <algorithm>

#include <unicode/utf8.h>

#include <zu/log.hpp>

namespace VX::Dialog::fennel {
namespace {

using std::string_view;

// MeCab takes memory of the length of what it analyses at once, and for a long run of digits or
// Latin letters time of the square.
constexpr std::size_t kLongestPart = 1024;

// Fields of a feature of the IPA dictionary.
constexpr int kPartOfSpeech = 0;
constexpr int kPartOfSpeechDetail = 1;
constexpr int kBaseForm = 6;

// Empty when there are fewer fields, as for words that the dictionary does not have.
string_view feature_field(string_view feature, int index) {
  for (int skipped = 0; skipped != index; ++skipped) {
    const std::size_t comma = feature.find(',');
    if (comma == string_view::npos) {
      return {};
    }
    feature.remove_prefix(comma + 1);
  }
  return feature.substr(0, feature.find(','));
}

// The dictionary calls Latin and Greek letters symbols, and also what it does not know at all,
// such as words of other scripts. Those count as words here.
bool is_function_word(const MeCab::Node& node) {
  const string_view part_of_speech = feature_field(node.feature, kPartOfSpeech);
  const bool is_symbol = part_of_speech == "記号" && node.stat != MECAB_UNK_NODE &&
                         feature_field(node.feature, kPartOfSpeechDetail) != "アルファベット";
  return is_symbol || part_of_speech == "助詞" || part_of_speech == "助動詞";
}

bool is_number(string_view feature) {
  return feature_field(feature, kPartOfSpeech) == "名詞" &&
         feature_field(feature, kPartOfSpeechDetail) == "数";
}

bool any_character(string_view utf8, bool (*predicate)(UChar32)) {
  const auto text = icu::UnicodeString::fromUTF8(
      icu::StringPiece(utf8.data(), static_cast<std::int32_t>(utf8.size())));
  for (std::int32_t index = 0; index < text.length(); index = text.moveIndex32(index, 1)) {
    if (predicate(text.char32At(index))) {
      return true;
    }
  }
  return false;
}

string_view base_form(string_view surface, string_view feature) {
  const string_view base = feature_field(feature, kBaseForm);
  const bool is_usable = !base.empty() && base != "*" && !any_character(base, is_blank);
  return is_usable ? base : surface;
}

// Digits that follow one another, with a full stop or comma between digits.
struct PendingNumber {
  std::string text;
  std::string separator;

  void finish(StemList& stems) {
    stems.add(text);
    text.clear();
    separator.clear();
  }
};

void replace_separators(icu::UnicodeString& text) {
  const std::int32_t length = text.length();
  char16_t* units = text.getBuffer(std::max(length, 1));
  if (units == nullptr) {
    return;
  }
  // All of them are single units.
  std::replace_if(
      units, units + length, [](char16_t unit) { return is_blank(unit) || unit == u'\uFFFD'; },
      u' ');
  text.releaseBuffer(length);
}

// Where the first part of a long text ends: after a sentence, else after a phrase, else after a
// blank, else after any character.
std::size_t end_of_part(string_view text) {
  if (text.size() <= kLongestPart) {
    return text.size();
  }
  const string_view part = text.substr(0, kLongestPart);
  for (const string_view mark : {"。", "、", " "}) {
    if (const std::size_t at = part.rfind(mark); at != string_view::npos) {
      return at + mark.size();
    }
  }
  std::size_t end = kLongestPart;
  while (U8_IS_TRAIL(text[end])) {
    --end;
  }
  return end;
}

std::string feature_of_first_word(const MeCab::Model& model, string_view text) {
  const std::unique_ptr<MeCab::Tagger> tagger(model.createTagger());
  const std::unique_ptr<MeCab::Lattice> lattice(model.createLattice());
  lattice->set_sentence(text.data(), text.size());
  const bool is_parsed = tagger->parse(lattice.get()) && lattice->bos_node()->next != nullptr;
  return is_parsed ? lattice->bos_node()->next->feature : "";
}

}  // namespace

std::unique_ptr<MeCab::Model> open_dictionary(const std::vector<std::string>& arguments) {
  for (const std::string& argument : arguments) {
    std::unique_ptr<MeCab::Model> model(MeCab::createModel(argument.c_str()));
    // Another encoding or another set of features would answer something else.
    if (model != nullptr &&
        feature_field(feature_of_first_word(*model, "食べた"), kBaseForm) == "食べる") {
      return model;
    }
  }
  static zu::log::Category* const category = zu::log::addCategory("Fennel.Stemmer");
  zu::log::LogStream(zu::log::Level::warning, "", "open_dictionary", 0, category)
      << "No MeCab dictionary (IPA, UTF-8): Japanese words are not reduced to their base forms";
  return nullptr;
}

const MeCab::Model* shared_dictionary() {
  // The known folders come first: stems should not change with the machine's MeCab settings.
  static const MeCab::Model* const model =
      open_dictionary({"-r /dev/null -d /var/lib/mecab/dic/ipadic-utf8",
                       "-r /dev/null -d /usr/share/mecab/dic/ipadic-utf8", ""})
          .release();
  return model;
}

void JapaneseAnalyzer::add_stems(icu::UnicodeString text, StemList& stems) {
  // MeCab knows one kind of blank, and may put other characters that it does not know in a word.
  replace_separators(text);
  std::string utf8;
  text.toUTF8String(utf8);
  string_view rest = utf8;
  std::string part;
  while (!rest.empty()) {
    part = rest.substr(0, end_of_part(rest));
    add_stems_of_part(part, stems);
    rest.remove_prefix(part.size());
  }
}

void JapaneseAnalyzer::add_stems_of_part(const std::string& part, StemList& stems) {
  // A part has a string of its own: after a blank at the end of its text MeCab goes on reading, up
  // to a NUL.
  lattice_->set_sentence(part.data(), part.size());
  if (!tagger_->parse(lattice_.get())) {
    return;
  }
  PendingNumber number;
  for (const MeCab::Node* node = lattice_->bos_node(); node != nullptr; node = node->next) {
    const string_view surface(node->surface, node->length);
    const string_view feature(node->feature);
    const bool follows_directly = node->rlength == node->length && !number.text.empty();
    const bool is_word = any_character(surface, starts_word);
    if (follows_directly && number.separator.empty() && (surface == "." || surface == ",")) {
      number.separator = surface;
      continue;
    }
    if (is_word && is_number(feature)) {
      if (!follows_directly) {
        number.finish(stems);
      }
      number.text.append(number.separator).append(surface);
      number.separator.clear();
      continue;
    }
    number.finish(stems);
    if (is_word && !is_function_word(*node)) {
      stems.add(base_form(surface, feature));
    }
  }
  number.finish(stems);
}

}  // namespace VX::Dialog::fennel
