// What the second front door costs: building a matcher, a query, an explanation. The bundled
// English model, and sentences of its words as often as they occur in English.
#include <algorithm>
#include <cmath>
#include <random>

#include <benchmark/benchmark.h>

#include <velmora/lint.hpp>
#include <velmora/matcher.hpp>

#include "engine/rule-compilation.hpp"
#include "engine/velmora-private.hpp"
#include "matcher/model-data.hpp"

namespace {

constexpr std::size_t kWordsInSentence = 8;

// Sentences drawn from the dictionary, a word of idf w as often as exp(-w) says.
class Sentences {
 public:
  explicit Sentences(const velmora::Model& model) {
    std::vector<double> frequencies;
    for (const auto& [word, word_id] : model.data().vocabulary) {
      words_.push_back(word);
      frequencies.push_back(std::exp(-model.data().idf[static_cast<std::size_t>(word_id)]));
    }
    draw_ = {frequencies.begin(), frequencies.end()};
  }

  std::string next() {
    std::string sentence;
    for (std::size_t i = 0; i != kWordsInSentence; ++i) {
      sentence += words_[static_cast<std::size_t>(draw_(random_))] + " ";
    }
    return sentence;
  }

 private:
  std::vector<std::string> words_;
  std::discrete_distribution<int> draw_;
  std::mt19937 random_{1};
};

const velmora::Model& english() {
  static const velmora::Model& model = *new velmora::Model(velmora::Model::installed("enu"));
  return model;
}

std::vector<velmora::Rule> make_rules(Sentences& sentences, int count, int sentences_a_rule) {
  std::vector<velmora::Rule> rules;
  for (int id = 1; id <= count; ++id) {
    rules.push_back({id, {}});
    for (int sentence = 0; sentence != sentences_a_rule; ++sentence) {
      rules.back().sentences.push_back(sentences.next());
    }
  }
  return rules;
}

// Arguments: rules, sentences of each, most sentences for the kernel regression.
void BM_MatcherBuild(benchmark::State& state) {
  Sentences sentences(english());
  const std::vector<velmora::Rule> rules =
      make_rules(sentences, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  velmora::ScoreOptions options;
  options.kernel_sentences = static_cast<std::size_t>(state.range(2));
  for (auto _ : state) {
    benchmark::DoNotOptimize(velmora::Matcher(english(), rules, options));
  }
}
BENCHMARK(BM_MatcherBuild)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(3)
    ->Args({1'000, 10, 0})
    ->Args({150, 10, 3'000})
    ->Args({300, 10, 3'000});

const velmora::Matcher& matcher_of(int rule_count) {
  static auto& matchers = *new std::map<int, velmora::Matcher>;
  const auto entry = matchers.find(rule_count);
  if (entry != matchers.end()) {
    return entry->second;
  }
  Sentences sentences(english());
  return matchers
      .emplace(rule_count, velmora::Matcher(english(), make_rules(sentences, rule_count, 10)))
      .first->second;
}

std::vector<std::string> make_queries() {
  Sentences sentences(english());
  std::vector<std::string> queries(100);
  std::generate(queries.begin(), queries.end(), [&] { return sentences.next(); });
  return queries;
}

// A sentence against rules of ten sentences each. Argument: rules; 150 use the kernel regression.
void BM_MatcherMatch(benchmark::State& state) {
  const velmora::Matcher& matcher = matcher_of(static_cast<int>(state.range(0)));
  const std::vector<std::string> queries = make_queries();
  std::size_t query = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(matcher.match(queries[query++ % queries.size()]));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_MatcherMatch)->Arg(150)->Arg(1'000);

// The published engine with each of 10,000 sentences a rule of its own.
void BM_PublishedMatch(benchmark::State& state) {
  VX::Dialog::VelmoraPrivate engine;
  std::string base = "not there";
  std::string language = "enu";
  engine.xSetModel(base, language);
  VX::Dialog::detail::renew_stemmer(engine);
  Sentences sentences(english());
  for (int rule = 0; rule != state.range(0); ++rule) {
    engine.fRuleVectors.push_back(english().vector(sentences.next()));
    engine.fRuleRows[rule] = rule;
    engine.fActive_rules.insert(rule);
  }
  engine.fRuleIndex.renew(engine.fRuleVectors);
  engine.fRuleIndex.trust_tables();  // as Velmora does
  const std::vector<std::string> queries = make_queries();
  std::size_t query = 0;
  for (auto _ : state) {
    std::vector<std::pair<double, std::vector<int>>> matches;
    benchmark::DoNotOptimize(engine.xMatchInput(queries[query++ % queries.size()], matches));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_PublishedMatch)->Arg(10'000);

// A hundred sentences at once against 1,000 rules. Argument: threads.
void BM_MatcherBatch(benchmark::State& state) {
  const velmora::Matcher& matcher = matcher_of(1'000);
  const std::vector<std::string> queries = make_queries();
  for (auto _ : state) {
    benchmark::DoNotOptimize(matcher.match(queries, {}, static_cast<unsigned>(state.range(0))));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(queries.size()));
}
BENCHMARK(BM_MatcherBatch)->Arg(1)->Arg(4)->UseRealTime()->Unit(benchmark::kMillisecond);

// Argument: rules.
void BM_MatcherExplain(benchmark::State& state) {
  const velmora::Matcher& matcher = matcher_of(static_cast<int>(state.range(0)));
  const std::string query = make_queries().front();
  for (auto _ : state) {
    benchmark::DoNotOptimize(matcher.explain(query, 1));
  }
}
BENCHMARK(BM_MatcherExplain)->Arg(150)->Arg(1'000)->Unit(benchmark::kMillisecond);

// Every finding of a dialogue. Arguments: rules, sentences of each.
void BM_Lint(benchmark::State& state) {
  Sentences sentences(english());
  velmora::ScoreOptions options;
  options.kernel_sentences = 0;  // so that all sizes are scored alike
  const velmora::Matcher matcher(
      english(),
      make_rules(sentences, static_cast<int>(state.range(0)), static_cast<int>(state.range(1))),
      options);
  for (auto _ : state) {
    benchmark::DoNotOptimize(velmora::lint(matcher));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(1));
}
BENCHMARK(BM_Lint)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(3)
    ->Args({100, 10})
    ->Args({1'000, 10})
    ->Args({5'000, 1});

}  // namespace
