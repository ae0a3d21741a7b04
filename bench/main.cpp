// Runs the benchmarks and prints the ratios that matter below them.
//
// A figure alone says little on a noisy machine; a ratio of two things measured in one run does.
// Of several repetitions the fastest counts.
#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <zu/log.hpp>

namespace {

// (numerator - subtrahend) / sum of denominators. An empty subtrahend stands for none.
struct Ratio {
  const char* question;
  const char* aim;
  const char* numerator;
  const char* subtrahend;
  std::vector<std::pair<double, const char*>> denominators;
};

const Ratio kRatios[] = {
    {"50,000 words against 5,000",
     "at most 1.10",
     "BM_MatchInput/50000/100/1000",
     "BM_Stems",
     {{1, "BM_MatchInput/5000/100/1000"}}},
    {"match, 1,000 rules, against one inverse",
     "at most 0.35",
     "BM_MatchInput/20000/100/1000",
     "BM_Stems",
     {{1, "BM_Inverse/100"}}},
    {"match, 10,000 rules, against inverse + one pass",
     "at most 0.50",
     "BM_MatchInput/20000/100/10000",
     "BM_Stems",
     {{1, "BM_Inverse/100"}, {1, "BM_MatrixVector/10000/100"}}},
    {"match, 100,000 rules, against one pass",
     "at most 0.40",
     "BM_MatchInput/20000/100/100000",
     "BM_Stems",
     {{1, "BM_MatrixVector/100000/100"}}},
    {"match, D = 200, 1,000 rules, against one inverse",
     "-",
     "BM_MatchInput/20000/200/1000",
     "BM_Stems",
     {{1, "BM_Inverse/200"}}},
    {"match, D = 300, 1,000 rules, against one inverse",
     "at most 0.06",
     "BM_MatchInput/20000/300/1000",
     "BM_Stems",
     {{1, "BM_Inverse/300"}}},
    {"exported chain, V = 20,000, against match",
     "-",
     "BM_ExportedChain/20000/1000",
     "",
     {{1, "BM_MatchInput/20000/100/1000"}}},
    {"exported chain, V = 50,000, against match",
     "-",
     "BM_ExportedChain/50000/1000",
     "",
     {{1, "BM_MatchInput/50000/100/1000"}}},
    {"compile 5,000 rules against 5,000 inverses",
     "at most 0.20",
     "BM_Compile/5000/20000/iterations:1/repeats:3",
     "",
     {{5000, "BM_Inverse/100"}}},
    {"index load, all known, against compilation",
     "-",
     "BM_WarmStart/0/0/iterations:1/repeats:3",
     "",
     {{1, "BM_Compile/10000/20000/iterations:1/repeats:3"}}},
    {"merge load, 1 % new, against compilation",
     "-",
     "BM_WarmStart/1/100/iterations:1/repeats:3",
     "",
     {{1, "BM_Compile/10000/20000/iterations:1/repeats:3"}}},
    {"matcher, 1,000 rules of 10, against published, 10,000",
     "at most 2.00",
     "BM_MatcherMatch/1000",
     "",
     {{1, "BM_PublishedMatch/10000"}}},
    {"snapshot writing, streams against ours",
     "at least 4",
     "BM_SnapshotWriteStreams",
     "",
     {{1, "BM_SnapshotWrite"}}},
    {"snapshot reading, streams against ours",
     "at least 4",
     "BM_SnapshotReadStreams",
     "",
     {{1, "BM_SnapshotRead"}}},
    {"model reading, streams against ours",
     "-",
     "BM_ModelMatrixReadStreams",
     "",
     {{1, "BM_ModelMatrixRead/100"}}},
    {"model reading, D = 300, against parsing alone",
     "-",
     "BM_ModelMatrixRead/300",
     "",
     {{1, "BM_ParseNumbers/300"}}},
};

// Shows the usual table and remembers the fastest repetition of each benchmark.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
        const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
        const auto [entry, is_new] = seconds_.try_emplace(run.run_name.str(), seconds);
        entry->second = std::min(entry->second, seconds);
      }
    }
  }

  bool is_empty() const { return seconds_.empty(); }

  void print_ratios() const {
    std::printf("\n%-52s %10s   %s\n", "ratio", "measured", "aim");
    for (const Ratio& ratio : kRatios) {
      if (missing_from(ratio).empty()) {
        std::printf("%-52s %10.3f   %s\n", ratio.question, value_of(ratio), ratio.aim);
      }
    }
  }

  /// Names the benchmarks that ratios need and that did not run. True when there are none.
  bool has_all_benchmarks() const {
    bool has_all = true;
    for (const Ratio& ratio : kRatios) {
      for (const std::string& name : missing_from(ratio)) {
        std::fprintf(stderr, "velmora-bench: no benchmark %s, needed for the ratio '%s'\n",
                     name.c_str(), ratio.question);
        has_all = false;
      }
    }
    return has_all;
  }

 private:
  std::vector<std::string> missing_from(const Ratio& ratio) const {
    std::vector<std::string> names = {ratio.numerator};
    if (*ratio.subtrahend != '\0') {
      names.emplace_back(ratio.subtrahend);
    }
    for (const auto& [factor, name] : ratio.denominators) {
      names.emplace_back(name);
    }
    std::erase_if(names, [&](const std::string& name) { return seconds_.contains(name); });
    return names;
  }

  double value_of(const Ratio& ratio) const {
    const double subtrahend = *ratio.subtrahend == '\0' ? 0.0 : seconds_.at(ratio.subtrahend);
    double denominator = 0.0;
    for (const auto& [factor, name] : ratio.denominators) {
      denominator += factor * seconds_.at(name);
    }
    return (seconds_.at(ratio.numerator) - subtrahend) / denominator;
  }

  std::map<std::string, double> seconds_;
};

}  // namespace

int main(int argc, char** argv) {
  zu::log::setLevel(zu::log::Level::error);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  if (reporter.is_empty()) {  // benchmarks were listed, not run
    return 0;
  }
  reporter.print_ratios();
  // A filter leaves benchmarks out on purpose. Without one, a missing benchmark was renamed or
  // removed.
  const bool is_filtered = !benchmark::GetBenchmarkFilter().empty();
  return is_filtered || reporter.has_all_benchmarks() ? 0 : 1;
}
