// Faults of rules. Tested by tests/matcher/lint-test.cpp.
#include <algorithm>
#include <map>
#include <set>
#include <span>

#include <velmora/lint.hpp>

#include "../support/utf8.hpp"
#include "scoring.hpp"

namespace velmora {

namespace {

// From here on two sentences are too close to be told apart.
constexpr double kTooClose = 0.9;

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

// Looks at one sentence after the other.
class Linter {
 public:
  explicit Linter(const Matcher& matcher) : matcher_(matcher), data_(matcher.data()) {
    for (std::size_t j = 0; j != data_.sentence_count(); ++j) {
      with_stems_[data_.texts[j].stems].push_back(j);
    }
  }

  std::vector<Finding> findings() {
    for (std::size_t j = 0; j != data_.sentence_count(); ++j) {
      look_at(j);
    }
    return std::move(findings_);
  }

 private:
  const Rule& rule_of(std::size_t j) const { return data_.rules[data_.rule_of[j]]; }
  std::size_t index_of(std::size_t j) const { return j - data_.first_sentence[data_.rule_of[j]]; }
  const std::string& text_of(std::size_t j) const { return rule_of(j).sentences[index_of(j)]; }

  void add(FindingKind kind, std::size_t j, std::string text) {
    findings_.push_back(
        {kind, rule_of(j).id, index_of(j), std::nullopt, std::nullopt, std::move(text)});
  }
  void add(FindingKind kind, std::size_t j, std::size_t other, std::string text) {
    findings_.push_back(
        {kind, rule_of(j).id, index_of(j), rule_of(other).id, index_of(other), std::move(text)});
  }

  void look_at(std::size_t j) {
    if (!VX::Dialog::detail::is_utf8(text_of(j))) {
      add(FindingKind::not_utf8, j, "the sentence is not well-formed UTF-8");
    }
    if (data_.texts[j].stems.empty()) {
      add(FindingKind::empty_sentence, j, "the sentence holds no word: nothing can find it");
      return;
    }
    look_at_words(j);
    look_at_same_words(j);
    look_at_neighbours(j);
  }

  void look_at_words(std::size_t j) {
    std::vector<std::string> unknown;
    for (const std::string& stem : data_.texts[j].stems) {
      if (!data_.model.knows(stem)) {
        unknown.push_back(stem);
      }
    }
    constexpr std::size_t kTellingLength = 3;
    const std::size_t count = data_.texts[j].stems.size();
    if (count >= kTellingLength && 2 * unknown.size() >= count) {
      add(FindingKind::other_language, j,
          "the model knows " + std::to_string(count - unknown.size()) + " of " +
              std::to_string(count) + " words: is this another language than " +
              data_.model.language() + "?");
      return;
    }
    if (unknown.size() == count) {
      add(FindingKind::no_known_word, j,
          "the model knows no word of the sentence: only the same words will find it");
      return;
    }
    for (const std::string& stem : unknown) {
      if (told_unknown_.insert({rule_of(j).id, stem}).second) {
        add(FindingKind::unknown_word, j,
            "the model does not know the word " + quoted(stem) +
                ": only the same spelling will find it");
      }
    }
  }

  void look_at_same_words(std::size_t j) {
    bool told_other = false;
    bool told_own = false;
    for (const std::size_t other : with_stems_[data_.texts[j].stems]) {
      const bool own = data_.rule_of[other] == data_.rule_of[j];
      if (own && other < j && !told_own) {
        told_own = true;
        add(FindingKind::duplicate_sentence, j, other,
            "the same words as " + quoted(text_of(other)) + " of the same rule");
      }
      if (!own && !told_other) {
        told_other = true;
        add(FindingKind::same_words, j, other,
            "the same words as " + quoted(text_of(other)) + " of rule " +
                std::to_string(rule_of(other).id));
      }
    }
  }

  // Sentences whose latent part alone does not rule out that they are too close to sentence j,
  // ascending; j is among them.
  std::vector<std::size_t> possible_neighbours(std::size_t j) {
    using VX::Dialog::detail::RowIndex;
    constexpr double kLowest =
        (kTooClose - detail::kKernelWords - detail::kKernelCharacters) / detail::kKernelLatent;
    const detail::RuleIndex& index = *data_.index;
    const auto latent = data_.sentences.latent.col(static_cast<Eigen::Index>(j));
    const auto coarse =
        index.latent.coarse({latent.data(), static_cast<std::size_t>(latent.size())});
    std::vector<std::size_t> possible;
    if (!coarse) {
      return possible;  // no known word: it shares nothing with the latent part of others
    }
    const std::span<const int> rows(index.rows.data(), data_.sentence_count());
    dots_.resize(rows.size());
    index.latent.dots(*coarse, rows, dots_);
    for (std::size_t s = 0; s != dots_.size(); ++s) {
      if (RowIndex::upper(dots_[s], *coarse) >= kLowest) {
        possible.push_back(index.sentences[s]);
      }
    }
    std::sort(possible.begin(), possible.end());
    return possible;
  }

  double similarity(std::size_t first, std::size_t second) const {
    const detail::SentenceTable& table = data_.sentences;
    return detail::kKernelLatent * table.latent.col(static_cast<Eigen::Index>(first))
                                       .dot(table.latent.col(static_cast<Eigen::Index>(second))) +
           detail::kKernelWords * detail::dot(table.words[first], table.words[second]) +
           detail::kKernelCharacters *
               detail::dot(table.characters[first], table.characters[second]);
  }

  void look_at_neighbours(std::size_t j) {
    double closest = kTooClose;
    std::optional<std::size_t> found;
    for (const std::size_t other : possible_neighbours(j)) {
      if (data_.rule_of[other] == data_.rule_of[j] ||
          data_.texts[other].stems == data_.texts[j].stems) {
        continue;
      }
      const double reached = similarity(j, other);
      if (reached >= closest) {
        closest = reached;
        found = other;
      }
    }
    if (found) {
      add(FindingKind::too_close, j, *found,
          "hardly differs from " + quoted(text_of(*found)) + " of rule " +
              std::to_string(rule_of(*found).id));
    }
    const Answer answer = matcher_.match(text_of(j));
    const Match* best = answer.best();
    if (best != nullptr && best->id != rule_of(j).id) {
      const std::size_t other = data_.first_sentence[data_.place_of(best->id)] + best->sentence;
      if (data_.texts[other].stems != data_.texts[j].stems) {
        add(FindingKind::finds_another_rule, j, other,
            "finds rule " + std::to_string(best->id) + " (" + quoted(text_of(other)) +
                ") and not its own");
      }
    }
  }

  const Matcher& matcher_;
  const detail::MatcherData& data_;
  std::map<std::vector<std::string>, std::vector<std::size_t>> with_stems_;
  std::set<std::pair<int, std::string>> told_unknown_;
  std::vector<Finding> findings_;
  std::vector<int> dots_;
};

}  // namespace

const char* name_of(FindingKind kind) noexcept {
  switch (kind) {
    case FindingKind::no_known_word:
      return "no_known_word";
    case FindingKind::unknown_word:
      return "unknown_word";
    case FindingKind::same_words:
      return "same_words";
    case FindingKind::too_close:
      return "too_close";
    case FindingKind::finds_another_rule:
      return "finds_another_rule";
    case FindingKind::other_language:
      return "other_language";
    case FindingKind::not_utf8:
      return "not_utf8";
    case FindingKind::empty_sentence:
      return "empty_sentence";
    case FindingKind::duplicate_sentence:
      return "duplicate_sentence";
  }
  return "unknown";
}

std::vector<Finding> lint(const Matcher& matcher) {
  return Linter(matcher).findings();
}

}  // namespace velmora
