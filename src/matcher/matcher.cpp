// Matching by the second front door. Tested by tests/matcher/matcher-test.cpp.
#include <velmora/matcher.hpp>

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <numeric>
#include <thread>
#include <velmora/error.hpp>

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
  return data_->places.size();
}

Matcher::Matcher(Model model, std::vector<Rule> rules, const ScoreOptions& options)
    : data_(std::make_shared<const detail::MatcherData>(std::move(model), std::move(rules), options)) {}

Answer Matcher::match(std::string_view sentence, const MatchOptions& options) const {
  const std::vector<std::size_t> places = detail::active_places(data_, options.active);
  const detail::Query query = detail::make_query(*data_, sentence);
  const detail::Scores scores(*data_, query, places);
  const std::vector<double>& values = scores.values();

  std::vector<std::size_t> order(places.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  // Two for the margin. The places come by ascending id.
  const std::size_t ranked = std::min(std::max<std::size_t>(options.top, 2), order.size());
  std::partial_sort(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(ranked),
                    order.end(), [&](std::size_t a, std::size_t b) {
                      return values[a] != values[b] ? values[a] > values[b] : a < b;
                    });
  Answer answer;
  answer.unknown = query.unknown;
  if (order.size() > 1) {
    answer.margin = values[order[0]] - values[order[1]];
  }
  for (std::size_t i = 0; i != std::min(options.top, ranked); ++i) {
    const std::size_t rule = places[order[i]];
    if (values[order[i]] >= options.threshold) {
      answer.matches.push_back({data_->rules[rule].id, values[order[i]],
                                scores.nearest(rule).together - data_->first_sentence[rule]});
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
  auto active = std::make_shared<detail::ActiveData>();
  active->owner = data_;
  for (const int id : sorted) {
    active->places.push_back(checked_place(*data_, id));
  }
  return ActiveRules(std::move(active));
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
