// How long a host waits for an answer: one sentence against the active rules of a dialogue.
#include <Eigen/LU>
#include <benchmark/benchmark.h>

#include <velmora/inference.hpp>
#include <velmora/preprocess.hpp>
#include <velmora/ranking.hpp>
#include <velmora/term-matrix.hpp>
#include <velmora/tfidf.hpp>

#include "synthetic-dialogue.hpp"
#include "text/stem-set.hpp"

namespace {

using bench::SyntheticDialogue;

// One whole answer. Arguments: vocabulary, dimension, active rules.
void BM_MatchInput(benchmark::State& state) {
  SyntheticDialogue dialogue(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  dialogue.fill_rules(static_cast<int>(state.range(2)));
  const std::string sentence = dialogue.make_sentence();
  std::vector<std::pair<double, std::vector<int>>> matches;
  dialogue.engine.xMatchInput(sentence, matches);  // indexes the rules, as a compilation would
  for (auto _ : state) {
    matches.clear();
    benchmark::DoNotOptimize(dialogue.engine.xMatchInput(sentence, matches));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_MatchInput)
    ->Args({5'000, 50, 1'000})
    ->Args({5'000, 100, 100})
    ->Args({5'000, 100, 1'000})
    ->Args({50'000, 100, 1'000})
    ->Args({20'000, 100, 1'000})
    ->Args({20'000, 100, 10'000})
    ->Args({20'000, 100, 100'000})
    ->Args({20'000, 200, 1'000})
    ->Args({20'000, 200, 10'000})
    ->Args({20'000, 300, 1'000})
    ->Args({20'000, 300, 10'000})
    ->Args({20'000, 300, 100'000});

// The stemmer's part of it, which is not ours to make faster here.
void BM_Stems(benchmark::State& state) {
  SyntheticDialogue dialogue(20'000, 1);
  const std::string sentence = dialogue.make_sentence();
  for (auto _ : state) {
    std::vector<std::string> stems;
    dialogue.engine.fStemmer->stem_sentence(sentence, stems);
    benchmark::DoNotOptimize(stems);
  }
}
BENCHMARK(BM_Stems);

// The floor of one fold-in: the inverse that the method needs. Argument: dimension.
void BM_Inverse(benchmark::State& state) {
  const Eigen::Index dim = state.range(0);
  const Eigen::MatrixXd half = Eigen::MatrixXd::Random(dim, dim);
  const Eigen::MatrixXd system =
      half * half.transpose() + 3.0 * Eigen::MatrixXd::Identity(dim, dim);
  for (auto _ : state) {
    Eigen::MatrixXd inverse = system.inverse();
    benchmark::DoNotOptimize(inverse.data());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Inverse)->Arg(50)->Arg(100)->Arg(200)->Arg(300);

// What scoring every row would cost at least: one pass over them. Arguments: rows, dimension.
void BM_MatrixVector(benchmark::State& state) {
  const Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor> rows =
      Eigen::MatrixXd::Random(state.range(0), state.range(1));
  const Eigen::VectorXd query = Eigen::VectorXd::Random(state.range(1));
  for (auto _ : state) {
    Eigen::VectorXd scores = rows * query;
    benchmark::DoNotOptimize(scores.data());
  }
}
BENCHMARK(BM_MatrixVector)->Args({10'000, 100})->Args({100'000, 100});

// The same answer through the published functions, without the stemmer. Arguments: vocabulary,
// active rules.
void BM_ExportedChain(benchmark::State& state) {
  SyntheticDialogue dialogue(static_cast<int>(state.range(0)), 100);
  dialogue.fill_rules(static_cast<int>(state.range(1)));
  VX::Dialog::VelmoraPrivate& engine = dialogue.engine;
  const std::map<int, std::vector<std::string>> sentences = {
      {0, VX::Dialog::detail::stem_set(*engine.fStemmer, dialogue.make_sentence())}};
  for (auto _ : state) {
    std::map<int, std::vector<int>> word_ids;
    VX::Dialog::word_indices(sentences, engine.fVocab, word_ids);
    std::map<int, std::map<int, double>> weights;
    VX::Dialog::tfidf(word_ids, engine.fIdf, weights);
    Eigen::SparseMatrix<double> terms(static_cast<Eigen::Index>(engine.fVocab.size()), 1);
    VX::Dialog::read_smat_data_OPTIM(weights, terms);
    wordsense_corpus corpus;
    VX::Dialog::initialize_wordsense_corpus(corpus, terms);
    Eigen::MatrixXd latent;
    wordsense_inference(corpus, engine.fModel, latent, engine.fModelGram);
    VX::Dialog::delete_wordsense_corpus(corpus);
    std::vector<std::vector<double>> queries;
    VX::Dialog::mat2vec(latent, queries);
    std::map<double, std::vector<int>> ranked;
    VX::Dialog::get_max(engine.fRuleVectors, queries.front(), ranked, engine.fActive_rules,
                        engine.fRuleRows);
    benchmark::DoNotOptimize(ranked);
  }
}
BENCHMARK(BM_ExportedChain)->Args({20'000, 1'000})->Args({50'000, 1'000});

}  // namespace
