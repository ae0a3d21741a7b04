// The matcher: which rule of a dialogue is meant by a sentence?
//
//   using namespace velmora;
//   const Matcher matcher(Model::installed("enu"), {{301, {"switch the lights on", "light up"}},
//                                                   {302, {"play some music"}}});
//   const Answer answer = matcher.match("could you turn on the lamp");
//   if (const Match* best = answer.best()) {
//     react_to(best->id, best->score);
//   }
//
// A sentence and the sentences of the rules are compared in three views: latent vectors (W. Guo and
// M. Diab, "Modeling Sentences in the Latent Space", ACL 2012), stems weighted by their rarity, and
// pieces of words, which survive typing errors. ScoreOptions tells how a score is made of them.
// Tested by tests/matcher/matcher-test.cpp.
#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <velmora/explanation.hpp>
#include <velmora/export.hpp>
#include <velmora/model.hpp>
#include <velmora/rules.hpp>

namespace velmora {

namespace detail {
struct ActiveData;
struct MatcherData;
}  // namespace detail

/// Weights of the parts of a score. The defaults are the best that we found on public data sets; a
/// host has no need to set them.
///
/// With q, x and y for the views of the sentence (latent, words, characters; each of length 1) and
/// f(j), w(j), c(j) for those of sentence j of a rule, the score of the rule is
///
///     nearest * max_j q.f(j) + centre * q.F + ridge * q.r + kernel * log10(m) * k.a
///       + g / m * (words * (max_j x.w(j) + x.W) + characters * (max_j y.c(j) + y.C))
///
/// divided by the sum of the weights. F, W and C are the sums of the rule's vectors, scaled to
/// length 1. r is the column of the rule in a ridge regression from the latent vectors of all
/// sentences to their rules. a is its column in a kernel ridge regression over the similarity k of
/// two sentences in all three views (0.4 latent, 0.3 words, 0.3 characters). m is the mean number
/// of sentences a rule: a regression has much to say where rules have many sentences, and shared
/// words where they have few. g is the square of min(1, u + s / shared_words),
/// where s is the highest x.w(j) of the active rules, and u the share of the words of the sentence
/// that the model does not know (by their squared weights): the counting parts fade where no rule
/// shares much with what was said, unless it is mostly words without a meaning to the model.
struct ScoreOptions {
  double nearest = 0.75;    ///< weight of the nearest sentence, latent
  double centre = 1.25;     ///< of the sum of the sentences, latent
  double ridge = 0.75;      ///< of the ridge regression
  double kernel = 1.5;      ///< of the kernel ridge regression
  double words = 0.25;      ///< of what is shared in words
  double characters = 1.0;  ///< of what is shared in pieces of words
  /// How much of the words of a sentence a rule must share for the counting parts to count in full,
  /// from 0 (they always do) to 1.
  double shared_words = 1.0;
  /// With more sentences than this the kernel ridge regression is left out, since the time to solve
  /// it grows with the third power of their number (3,000: about two seconds). It is left out, too,
  /// where sentences times rules are more than a million, since every query reads as many numbers.
  std::size_t kernel_sentences = 3000;
};

/// A rule that answers a sentence.
struct Match {
  int id = 0;  ///< of the rule
  /// Rarely above 1; what is unrelated lies around 0.
  double score = 0.0;
  /// Which sentence of the rule came closest: an index into Rule::sentences.
  std::size_t sentence = 0;
};

/// What Matcher::match found out about a sentence.
struct Answer {
  /// Best first; rules of equal scores by ascending id. Empty when no rule reaches the threshold.
  std::vector<Match> matches;
  /// Stems of the sentence that neither the model nor the rules know, sorted.
  std::vector<std::string> unknown;
  /// Score of the best rule less that of the second best, whether or not they reach the threshold;
  /// infinite when only one rule is active.
  double margin = std::numeric_limits<double>::infinity();

  /// The best match; null when there is none.
  const Match* best() const noexcept { return matches.empty() ? nullptr : &matches.front(); }
};

/// Some of the rules of a matcher, prepared for matching; made by Matcher::activate. Immutable,
/// cheap to copy and safe from any thread; serves the matcher that made it, and its copies.
class VELMORA_EXPORT ActiveRules {
 public:
  /// Number of active rules.
  std::size_t size() const noexcept;

  /// For the library itself.
  const detail::ActiveData& data() const noexcept { return *data_; }

 private:
  friend class Matcher;
  explicit ActiveRules(std::shared_ptr<const detail::ActiveData> data) : data_(std::move(data)) {}

  std::shared_ptr<const detail::ActiveData> data_;
};

/// What an answer should hold.
struct MatchOptions {
  /// At most so many matches.
  std::size_t top = 5;
  /// Matches below this score are left out.
  double threshold = -std::numeric_limits<double>::infinity();
  /// The rules that may answer; null for all. Must have been made by the matcher, or by one that it
  /// was copied from.
  const ActiveRules* active = nullptr;
};

/// Hears how many steps of a long piece of work are done.
using Progress = std::function<void(std::size_t done, std::size_t total)>;

/// Rules compiled for matching. Immutable and shared: a copy costs as much as a shared pointer, and
/// every member may be called from any number of threads at once. Nothing is logged or written.
/// The same model, rules and sentences give the same scores on every machine.
///
/// Members also let std::bad_alloc through.
class VELMORA_EXPORT Matcher {
 public:
  /// Compiles rules: about a second for 10,000 sentences.
  ///
  /// rules   any number, in any order. Throws Error when an id comes twice or a rule has no
  ///         sentence. A sentence may be any text; lint() tells which of them are of no use.
  ///
  /// progress   called on this thread, twice for each sentence; the regressions are solved after
  ///            the last call
  Matcher(Model model, std::vector<Rule> rules, const ScoreOptions& options = {},
          const Progress& progress = {});

  /// Ranks the active rules for a sentence (UTF-8; ill-formed bytes separate words). A matcher
  /// without rules answers nothing. Throws Error when options.active belongs to another matcher.
  Answer match(std::string_view sentence, const MatchOptions& options = {}) const;

  /// The same for many sentences: an answer for each, in their order.
  ///
  /// threads   how many work at the same time; 0 for as many as the machine runs at once
  std::vector<Answer> match(const std::vector<std::string>& sentences,
                            const MatchOptions& options = {}, unsigned threads = 1) const;

  /// Prepares a set of rules for MatchOptions::active, so that matching costs what is active.
  /// Repeats in `ids` do no harm. Throws Error for an id that is not among the rules.
  ActiveRules activate(const std::vector<int>& ids) const;

  /// Why a rule has the score that match() gives it: the score as a sum over pairs of words.
  ///
  /// active   as in MatchOptions
  ///
  /// Throws Error for an id that is not among the (active) rules.
  Explanation explain(std::string_view sentence, int id, const ActiveRules* active = nullptr) const;

  /// The one that was given.
  const Model& model() const noexcept;
  /// In the order in which they were given.
  const std::vector<Rule>& rules() const noexcept;
  /// The rule with an id; null when there is none.
  const Rule* find(int id) const noexcept;
  /// False when the kernel ridge regression was left out: see ScoreOptions::kernel_sentences. Rules
  /// of one sentence each have none either.
  bool uses_kernel() const noexcept;

  /// For the library itself.
  const detail::MatcherData& data() const noexcept { return *data_; }

 private:
  std::shared_ptr<const detail::MatcherData> data_;
};

}  // namespace velmora
