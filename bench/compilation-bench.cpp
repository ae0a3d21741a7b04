// How long a host's start takes: compilation of a dialogue, and the warm starts that avoid it.
#include <sys/resource.h>

#include <benchmark/benchmark.h>

#include "synthetic-dialogue.hpp"

namespace {

using bench::Rules;
using bench::SyntheticDialogue;

double peak_megabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

// Compilation of distinct rules. Arguments: rules, vocabulary. The counter shows what it adds to
// the peak of the process, which is meaningful when this benchmark runs alone or first.
void BM_Compile(benchmark::State& state) {
  double added = 0.0;
  for (auto _ : state) {
    state.PauseTiming();
    auto dialogue = std::make_unique<SyntheticDialogue>(static_cast<int>(state.range(1)), 100);
    Rules rules = dialogue->make_rules(static_cast<int>(state.range(0)));
    const double before = peak_megabytes();
    state.ResumeTiming();
    benchmark::DoNotOptimize(dialogue->engine.xLoadDialogVectors(rules));
    state.PauseTiming();
    added = std::max(added, peak_megabytes() - before);
    dialogue.reset();
    state.ResumeTiming();
  }
  state.counters["added_MB"] = added;
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Compile)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(3)
    ->Args({5'000, 20'000})
    ->Args({10'000, 20'000});

// A warm start of 10,000 rules. Arguments: 1 to compile new rules, number of new rules.
void BM_WarmStart(benchmark::State& state) {
  constexpr int kRules = 10'000;
  const int new_rules = static_cast<int>(state.range(1));
  SyntheticDialogue dialogue(20'000, 100);
  Rules rules = dialogue.make_rules(kRules - new_rules);
  {
    Rules known = rules;
    dialogue.engine.xLoadDialogVectors(known);
  }
  rules.merge(dialogue.make_rules(new_rules, kRules + 1));
  for (auto _ : state) {
    dialogue.engine.fRuleRows.clear();
    benchmark::DoNotOptimize(
        dialogue.engine.xLoadDialogVectorsFromFile("newindex", rules, state.range(0) != 0));
  }
}
BENCHMARK(BM_WarmStart)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(3)
    ->Args({0, 0})
    ->Args({1, 0})
    ->Args({1, 100});

}  // namespace
