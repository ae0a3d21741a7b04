// Matching by the second front door. Tested by tests/matcher/matcher-test.cpp.
#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>

#include <velmora/error.hpp>
#include <velmora/matcher.hpp>

#include "scoring.hpp"

namespace velmora {

namespace {

std::size_t checked_place(const detail::MatcherData& matcher, int id) {
  const std::size_t place = matcher.place_of(id);
  if (place == matcher.rules.size()) {
    throw Error("rule " + std::to_string(id) + " is not among the rules");
  }
  return place;
}

}  // namespace

std::size_t ActiveRules::size() const noexcept {
  return data_->index.places.size();
}

Matcher::Matcher(Model model, std::vector<Rule> rules, const ScoreOptions& options,
                 const Progress& progress)
    : data_(std::make_shared<const detail::MatcherData>(std::move(model), std::move(rules), options,
                                                        progress)) {}

Answer Matcher::match(std::string_view sentence, const MatchOptions& options) const {
  const detail::RuleIndex& index = detail::active_index(data_, options.active);
  const detail::Query query = detail::make_query(*data_, sentence);
  const detail::Scores scores(*data_, index, query);
  // Two for the margin.
  const std::vector<detail::RuleScore> best = scores.best(std::max<std::size_t>(options.top, 2));
  Answer answer;
  answer.unknown = query.unknown;
  if (best.size() > 1) {
    answer.margin = best[0].score - best[1].score;
  }
  for (std::size_t i = 0; i != std::min(options.top, best.size()); ++i) {
    if (best[i].score >= options.threshold) {
      const std::size_t place = index.places[best[i].rule];
      answer.matches.push_back(
          {data_->rules[place].id, best[i].score,
           scores.nearest(best[i].rule).together - data_->first_sentence[place]});
    }
  }
  return answer;
}

std::vector<Answer> Matcher::match(const std::vector<std::string>& sentences,
                                   const MatchOptions& options, unsigned threads) const {
  std::vector<Answer> answers(sentences.size());
  std::atomic<std::size_t> next = 0;
  std::exception_ptr failure;
  std::mutex failure_mutex;
  const auto work = [&] {
    try {
      for (std::size_t i = next++; i < sentences.size(); i = next++) {
        answers[i] = match(sentences[i], options);
      }
    } catch (...) {
      const std::lock_guard lock(failure_mutex);
      failure = std::current_exception();
    }
  };
  if (threads == 0) {
    threads = std::max(1U, std::thread::hardware_concurrency());
  }
  const std::size_t helpers = std::min<std::size_t>(threads, sentences.size());
  std::vector<std::thread> others;
  for (std::size_t i = 1; i < helpers; ++i) {
    others.emplace_back(work);
  }
  work();
  for (std::thread& other : others) {
    other.join();
  }
  if (failure) {
    std::rethrow_exception(failure);
  }
  return answers;
}

ActiveRules Matcher::activate(const std::vector<int>& ids) const {
  std::vector<int> sorted = ids;
  std::sort(sorted.begin(), sorted.end());
  sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
  std::vector<std::size_t> places;
  places.reserve(sorted.size());
  for (const int id : sorted) {
    places.push_back(checked_place(*data_, id));
  }
  return ActiveRules(std::make_shared<const detail::ActiveData>(
      detail::ActiveData{data_, detail::RuleIndex(std::move(places), data_->first_sentence,
                                                  data_->sentences, data_->linear, data_->views)}));
}

const Model& Matcher::model() const noexcept {
  return data_->model;
}

const std::vector<Rule>& Matcher::rules() const noexcept {
  return data_->rules;
}

const Rule* Matcher::find(int id) const noexcept {
  const std::size_t place = data_->place_of(id);
  return place != data_->rules.size() ? &data_->rules[place] : nullptr;
}

bool Matcher::uses_kernel() const noexcept {
  return data_->uses_kernel();
}

}  // namespace velmora
