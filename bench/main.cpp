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

// (numerator - subtrahend) / sum of denominators.
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
     "at most 1.40",
     "BM_MatchInput/20000/100/1000",
     "BM_Stems",
     {{1, "BM_Inverse/100"}}},
    {"match, 10,000 rules, against inverse + one pass",
     "at most 1.50",
     "BM_MatchInput/20000/100/10000",
     "BM_Stems",
     {{1, "BM_Inverse/100"}, {1, "BM_MatrixVector/10000/100"}}},
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
     "at most 1.30",
     "BM_Compile/5000/20000/iterations:1/repeats:3",
     "",
     {{5000, "BM_Inverse/100"}}},
    {"index load, all known, against compilation",
     "at most 0.05",
     "BM_WarmStart/0/0/iterations:1/repeats:3",
     "",
     {{1, "BM_Compile/10000/20000/iterations:1/repeats:3"}}},
    {"merge load, 1 % new, against compilation",
     "at most 0.10",
     "BM_WarmStart/1/100/iterations:1/repeats:3",
     "",
     {{1, "BM_Compile/10000/20000/iterations:1/repeats:3"}}},
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
     {{1, "BM_ModelMatrixRead"}}},
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

  void print_ratios() const {
    std::printf("\n%-52s %10s   %s\n", "ratio", "measured", "aim");
    for (const Ratio& ratio : kRatios) {
      bool is_complete = has(ratio.numerator);
      double denominator = 0.0;
      for (const auto& [factor, name] : ratio.denominators) {
        is_complete = is_complete && has(name);
        denominator += is_complete ? factor * seconds_.at(name) : 0.0;
      }
      if (is_complete) {
        const double subtrahend = has(ratio.subtrahend) ? seconds_.at(ratio.subtrahend) : 0.0;
        std::printf("%-52s %10.3f   %s\n", ratio.question,
                    (seconds_.at(ratio.numerator) - subtrahend) / denominator, ratio.aim);
      }
    }
  }

 private:
  bool has(const std::string& name) const { return seconds_.contains(name); }

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
  reporter.print_ratios();
  return 0;
}
