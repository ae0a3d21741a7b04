// Reading and writing of the large text files, against the same through streams.
#include <charconv>
#include <fstream>
#include <sstream>

#include <benchmark/benchmark.h>

#include <velmora/matrix-files.hpp>
#include <velmora/snapshot.hpp>

#include "snapshot/snapshot-reader.hpp"
#include "synthetic-dialogue.hpp"

namespace {

using bench::SyntheticDialogue;

constexpr int kRules = 10'000;

// A dialogue of kRules rules whose tables can be saved.
std::unique_ptr<SyntheticDialogue> saved_dialogue() {
  auto dialogue = std::make_unique<SyntheticDialogue>(20'000, 100);
  dialogue->fill_rules(kRules);
  for (int rule = 0; rule != kRules; ++rule) {
    dialogue->engine.fRuleWords[rule] = {"w" + std::to_string(rule),
                                         "w" + std::to_string(rule + 1)};
  }
  return dialogue;
}

void BM_SnapshotWrite(benchmark::State& state) {
  const auto dialogue = saved_dialogue();
  const auto& engine = dialogue->engine;
  for (auto _ : state) {
    VX::Dialog::write_ls(engine.fRuleVectors, engine.fRuleWords, engine.fRuleRows,
                         engine.fModelDir + "index");
  }
}
BENCHMARK(BM_SnapshotWrite)->Unit(benchmark::kMillisecond);

// What a plain program does: a string stream for each value.
void BM_SnapshotWriteStreams(benchmark::State& state) {
  const auto dialogue = saved_dialogue();
  const auto& engine = dialogue->engine;
  const auto text = [](const auto& value) {
    std::ostringstream out;
    out << value;
    return out.str();
  };
  for (auto _ : state) {
    std::ofstream out(engine.fModelDir + "index");
    for (const auto& [rule_id, row] : engine.fRuleRows) {
      out << text(row) << "\n" << text(rule_id) << "\n";
      for (const std::string& stem : engine.fRuleWords.at(rule_id)) {
        out << stem << " ";
      }
      out << "\n";
      for (const double value : engine.fRuleVectors[static_cast<std::size_t>(row)]) {
        out << text(value) << " ";
      }
      out << "\n";
    }
  }
}
BENCHMARK(BM_SnapshotWriteStreams)->Unit(benchmark::kMillisecond);

void BM_SnapshotRead(benchmark::State& state) {
  const auto dialogue = saved_dialogue();
  const auto& engine = dialogue->engine;
  const std::string path = engine.fModelDir + "index";
  VX::Dialog::write_ls(engine.fRuleVectors, engine.fRuleWords, engine.fRuleRows, path);
  for (auto _ : state) {
    benchmark::DoNotOptimize(VX::Dialog::detail::read_snapshot(path));
  }
}
BENCHMARK(BM_SnapshotRead)->Unit(benchmark::kMillisecond);

void BM_SnapshotReadStreams(benchmark::State& state) {
  const auto dialogue = saved_dialogue();
  const auto& engine = dialogue->engine;
  const std::string path = engine.fModelDir + "index";
  VX::Dialog::write_ls(engine.fRuleVectors, engine.fRuleWords, engine.fRuleRows, path);
  for (auto _ : state) {
    std::map<std::vector<std::string>, std::vector<double>> snapshot;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
      std::getline(in, line);
      std::getline(in, line);
      std::istringstream words(line);
      std::vector<std::string> stems;
      for (std::string stem; words >> stem;) {
        stems.push_back(stem);
      }
      std::getline(in, line);
      std::istringstream numbers(line);
      std::vector<double> vector;
      for (double value = 0.0; numbers >> value;) {
        vector.push_back(value);
      }
      snapshot[stems] = vector;
    }
    benchmark::DoNotOptimize(snapshot);
  }
}
BENCHMARK(BM_SnapshotReadStreams)->Unit(benchmark::kMillisecond);

// The factors of a model of 20,000 words: what setModel spends most of its time on. Argument:
// dimension.
void BM_ModelMatrixRead(benchmark::State& state) {
  SyntheticDialogue dialogue(20'000, static_cast<int>(state.range(0)));
  std::string path = dialogue.engine.fModelDir + "model.conf";
  VX::Dialog::write_mat_data(path, dialogue.engine.fModel.word_factors);
  for (auto _ : state) {
    Eigen::MatrixXd matrix;
    benchmark::DoNotOptimize(VX::Dialog::read_mat_data(path.data(), matrix));
  }
}
BENCHMARK(BM_ModelMatrixRead)->Unit(benchmark::kMillisecond)->Arg(100)->Arg(300);

// The floor of it: the numbers of the file, one after another, from memory.
void BM_ParseNumbers(benchmark::State& state) {
  SyntheticDialogue dialogue(20'000, static_cast<int>(state.range(0)));
  const std::string path = dialogue.engine.fModelDir + "model.conf";
  VX::Dialog::write_mat_data(path, dialogue.engine.fModel.word_factors);
  std::ostringstream content;
  content << std::ifstream(path).rdbuf();
  const std::string text = content.str();
  for (auto _ : state) {
    double sum = 0.0;
    for (const char* next = text.data(); next != text.data() + text.size(); ++next) {
      double value = 0.0;
      next = std::from_chars(next, text.data() + text.size(), value).ptr;
      sum += value;
    }
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(BM_ParseNumbers)->Unit(benchmark::kMillisecond)->Arg(300);

void BM_ModelMatrixReadStreams(benchmark::State& state) {
  SyntheticDialogue dialogue(20'000, 100);
  const std::string path = dialogue.engine.fModelDir + "model.conf";
  VX::Dialog::write_mat_data(path, dialogue.engine.fModel.word_factors);
  for (auto _ : state) {
    std::ifstream in(path);
    Eigen::Index columns = 0;
    Eigen::Index rows = 0;
    in >> columns >> rows;
    Eigen::MatrixXd matrix(rows, columns);
    for (double& value : matrix.reshaped()) {
      in >> value;
    }
    benchmark::DoNotOptimize(matrix.data());
  }
}
BENCHMARK(BM_ModelMatrixReadStreams)->Unit(benchmark::kMillisecond);

}  // namespace
