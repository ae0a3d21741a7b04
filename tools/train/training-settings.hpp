// What a training depends on, with the defaults that docs/training.md explains.
//
// Filled by options.cpp; used by training.cpp and its stages. Tested by
// tools/train/tests/program-test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "corpus-reader.hpp"
#include "factorisation.hpp"
#include "model-writer.hpp"
#include "progress.hpp"
#include "refinement.hpp"

namespace velmora::trainer {

/// A model that is to stand beside others, and how much its factors weigh.
struct JoinedModel {
  std::filesystem::path directory;
  double weight = 1.0;
};

struct TrainingSettings {
  CorpusInput corpus;
  /// Weights of the documents by label; 1 for a label that is not in it.
  std::map<std::string, double> label_weights;

  /// Labels of the sources that the dictionary and the idf come from; all when empty.
  std::set<std::string> everyday;
  /// Most words of the dictionary.
  std::size_t vocabulary = 10000;
  /// Fewest everyday documents that hold a word of the dictionary.
  std::size_t min_count = 2;
  double idf_floor = 0.05;

  /// First factors, draws of the refinement, and signs of short words.
  std::uint64_t random_start = 1;
  FactorisationSettings factorisation;
  int sweeps = 3;
  /// Where the factors are saved after each sweep; empty for nowhere.
  std::filesystem::path checkpoint;
  /// Go on from the checkpoint, if there is one.
  bool resume = false;
  RefinementSettings refinement;

  /// A file of vectors, one for each line of the corpora, which the sums of the words' factors are
  /// to follow (teacher.hpp); empty for the factorisation.
  std::filesystem::path teacher;
  /// How much of the vectors' mean is taken off each of them.
  double mean_share = 1.0;
  /// Ridge term of that regression.
  double teacher_lambda = 10.0;
  /// Shorter words than this share of the root mean square length get random signs beside.
  double least_length = 0.0;
  /// Not empty: no training, but these models side by side (join.hpp).
  std::vector<JoinedModel> join;

  ModelSettings model;
  /// The model directory to make.
  std::filesystem::path output;
  /// Replace a model that lies there.
  bool force = false;

  Progress::Show progress = Progress::Show::always;
};

}  // namespace velmora::trainer
