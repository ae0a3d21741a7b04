// A corpus with a teacher: texts whose vectors are known from elsewhere, say a sentence encoder.
//
// Line k of the corpora belongs to row k of a file of vectors; a row of zeros means that the line
// has no teacher. Used by training.cpp; regression.hpp finds the word vectors whose sums follow the
// teacher. Tested by tools/train/tests/teacher-test.cpp.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <Eigen/Core>

#include "corpus-reader.hpp"
#include "sparse-rows.hpp"

namespace velmora::trainer {

/// A row for each word, so that what belongs to a word lies together.
using RowMatrix = Eigen::Matrix<float, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

/// With X the N x V matrix of tf-idf rows, each of length 1, A the diagonal matrix of the weights,
/// and E the N x T matrix of the teacher's vectors, each of length 1, less a share of their mean,
/// of length 1 again.
struct TaughtTexts {
  SparseRows rows;             // X
  std::vector<float> weights;  // the diagonal of A
  RowMatrix products;          // V x T: X'AE
};

struct TeacherInput {
  CorpusInput corpus;
  std::filesystem::path vectors;
  std::map<std::string, double> label_weights;
  double mean_share = 1.0;  // how much of the mean is taken off; 0 leaves the vectors as they are
};

/// Reads the corpora and the vectors once more, side by side, and holds neither. Unlike in the
/// factorisation a line counts as often as it stands there, and one known word is enough: a word
/// alone, with its vector, teaches that word. A line of which half the words or more are unknown is
/// left out, since the vector speaks of all of them.
///
/// word_ids   word of the dictionary to its id
/// idf        one value for each id
///
/// Throws Failure when the file of vectors does not have a row for each line, or nothing is left.
TaughtTexts read_taught_texts(const TeacherInput& input,
                              const std::map<std::string, std::int32_t>& word_ids,
                              const std::vector<double>& idf,
                              const std::function<void(double bytes)>& report);

}  // namespace velmora::trainer
