// From stems to the weighted sparse matrix, through the library's offline corpus tools.
//
//   stems --known words, two or more--> shard --rm_infreq--> normal form --index--> word-id lines
//     --tfidf--> weighted rows --cpp_data_format--> sparse matrix file --read_smat_data--> rows
//
// The offline tools hold a whole corpus in memory, each in a form many times larger than the rows
// here, and read_smat_data wants a matrix of the final shape. So the corpus goes through them in
// shards of fixed size: the memory that they need does not grow with the corpus. They report no
// failed write either; every stage file is therefore counted before the next tool gets it.
//
// Used by training.cpp. Tested by tests/corpus-test.cpp.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "sparse-rows.hpp"

namespace velmora::trainer {

struct MatrixStageInput {
  /// A corpus of stems, as for_each_document reads it.
  std::filesystem::path stems;
  std::filesystem::path dictionary;
  std::filesystem::path idf;
  /// What the dictionary holds.
  std::unordered_map<std::string, int> word_ids;
  /// Weights of labels; a label that is not in it weighs 1.
  std::map<std::string, double> label_weights;
  /// Where the stage files go.
  std::filesystem::path work_directory;
  bool keep_stage_files = false;
  std::size_t documents_per_shard = 16384;
};

struct WeightedDocuments {
  /// N x V tf-idf weights.
  SparseRows rows;
  /// One for each row.
  std::vector<double> weights;
};

/// Documents with fewer than two different known words are left out. Throws Failure when a stage
/// file can't be written in full.
WeightedDocuments weighted_documents(const MatrixStageInput& input,
                                     const std::function<void(double bytes)>& report);

}  // namespace velmora::trainer
