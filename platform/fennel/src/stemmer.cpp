#include <new>
#include <utility>

#include <fennel/stemmer.hpp>

#include "japanese.hpp"
#include "shortenings.hpp"
#include "stem-list.hpp"
#include "text.hpp"
#include "words.hpp"

namespace VX::Dialog {
namespace fennel {
namespace {

// No word is that long, and Snowball's time grows with the square of the length.
constexpr std::size_t kLongestStemmedWord = 100;

struct Language {
  std::string_view code;
  const char* locale;
  const char* snowball;  // algorithm; null: no stemming
  AddWord add_word;
};

constexpr Language kLanguages[] = {
    {"enu", "en", "english", add_english},
    {"frf", "fr", "french", add_french},
    {"jpj", "ja", nullptr, add_unchanged},
};
constexpr Language kUnknownLanguage = {"", "", nullptr, add_unchanged};

const Language& find_language(std::string_view code) {
  for (const Language& language : kLanguages) {
    if (language.code == code) {
      return language;
    }
  }
  return kUnknownLanguage;
}

}  // namespace

void StemList::add(std::string_view word) {
  std::string_view stem = word;
  if (snowball_ != nullptr && word.size() <= kLongestStemmedWord) {
    const sb_symbol* symbols = sb_stemmer_stem(
        snowball_, reinterpret_cast<const sb_symbol*>(word.data()), static_cast<int>(word.size()));
    if (symbols == nullptr) {
      throw std::bad_alloc();
    }
    const int length = sb_stemmer_length(snowball_);
    if (length > 0) {
      stem = {reinterpret_cast<const char*>(symbols), static_cast<std::size_t>(length)};
    }
  }
  if (stem.empty()) {
    return;
  }
  if (count_ < stems_.size()) {
    stems_[count_].assign(stem);
  } else {
    stems_.emplace_back(stem);
  }
  ++count_;
}

}  // namespace fennel

struct Stemmer::Impl {
  explicit Impl(const fennel::Language& of)
      : language(of),
        splitter(of.locale),
        snowball(of.snowball != nullptr ? sb_stemmer_new(of.snowball, "UTF_8") : nullptr) {
    if (language.snowball != nullptr && snowball == nullptr) {
      throw std::bad_alloc();
    }
    if (language.code == "jpj" && fennel::shared_dictionary() != nullptr) {
      japanese = std::make_unique<fennel::JapaneseAnalyzer>(*fennel::shared_dictionary());
    }
  }

  const fennel::Language& language;
  fennel::WordSplitter splitter;
  fennel::Snowball snowball;
  std::unique_ptr<fennel::JapaneseAnalyzer> japanese;  // null: words as ICU finds them
};

Stemmer::Stemmer(const std::string& language)
    : impl_(std::make_unique<Impl>(fennel::find_language(language))) {}

Stemmer::~Stemmer() = default;

void Stemmer::stem_sentence(const std::string& sentence, std::vector<std::string>& stems) {
  fennel::NormalizedText normalized = fennel::normalize(sentence);
  // From here on `sentence` is not read: it may be one of the strings of `stems`.
  fennel::StemList list(stems, impl_->snowball.get());
  if (impl_->japanese != nullptr) {
    impl_->japanese->add_stems(std::move(normalized.text), list);
  } else {
    impl_->splitter.split(normalized, impl_->language.add_word, list);
  }
  list.finish();
}

}  // namespace VX::Dialog
