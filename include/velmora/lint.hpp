// Faults of a set of rules that can be found without a single user.
// Tested by tests/matcher/lint-test.cpp.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <velmora/export.hpp>
#include <velmora/matcher.hpp>

namespace velmora {

/// What can be wrong with a sentence of a rule.
enum class FindingKind {
  no_known_word,       ///< the model knows no word of a sentence: only counting can find it
  unknown_word,        ///< a word that the model does not know; one finding a word and rule
  same_words,          ///< two sentences of two rules have the same stems: both always score alike
  too_close,           ///< two sentences of two rules that the matcher can hardly tell apart
  finds_another_rule,  ///< a sentence, typed as it is, is answered by another rule
  other_language,      ///< most words of a sentence are unknown to the model
  not_utf8,            ///< ill-formed UTF-8
  empty_sentence,      ///< nothing but blanks and marks
  duplicate_sentence,  ///< the same stems twice in one rule
};

/// The name of a kind as it stands above: "no_known_word" and so on.
VELMORA_EXPORT const char* name_of(FindingKind kind) noexcept;

/// A fault of a sentence, or of two sentences together.
struct Finding {
  FindingKind kind = FindingKind::no_known_word;  ///< what is wrong
  int rule = 0;                                   ///< id of the rule
  std::size_t sentence = 0;                       ///< index into Rule::sentences
  /// Id of the other rule, for the kinds that speak of two sentences.
  std::optional<int> other = std::nullopt;
  /// Its sentence: an index into Rule::sentences.
  std::optional<std::size_t> other_sentence = std::nullopt;
  /// What is wrong, as a sentence for the author of the rules; names no file.
  std::string text;
};

/// Looks at all rules of a matcher. Findings come by rule, in the order of Matcher::rules(), then
/// by sentence, then by kind. Takes about as long as matching every sentence of the rules once.
VELMORA_EXPORT std::vector<Finding> lint(const Matcher& matcher);

}  // namespace velmora
