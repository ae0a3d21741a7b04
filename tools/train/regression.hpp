// Word vectors from a teacher, by ridge regression.
//
// The vector of a text is to follow the teacher's when it is the sum of its words' vectors, each
// times its weight in the text. With X, A and E as in teacher.hpp, the V x T matrix W of word
// vectors that lowers
//
//     sum_j a(j) |x(j) W - e(j)|^2 + lambda |W|^2
//
// is (X'AX + lambda I)^-1 X'AE. It comes from conjugate gradients (M. Hestenes, E. Stiefel,
// "Methods of Conjugate Gradients for Solving Linear Systems", 1952), each column of its own,
// preconditioned by the diagonal: X'AX itself would not fit into memory, and a few steps do.
//
// Nothing but the signs of short words is random, and all sums have a fixed order: the same texts
// and vectors give the same bits with any number of threads and on any machine of one architecture.
// Used by training.cpp. Tested by tools/train/tests/teacher-test.cpp.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <Eigen/Core>

#include "teacher.hpp"

namespace velmora::trainer {

/// W, until no residual has more than 1e-4 of its first length.
///
/// report   called with the share of the work just done; the whole is 1
RowMatrix word_vectors(const TaughtTexts& texts, double lambda, int threads,
                       const std::function<void(double share)>& report);

/// D x V word factors: W in the D directions that hold most of idf x W, the words as they stand in
/// a sentence. Fewer rows when the teacher has fewer dimensions.
Eigen::MatrixXf principal_factors(const RowMatrix& vectors, const std::vector<double>& idf,
                                  int dim);

/// Words that the teacher hardly taught have short factors, which say little of them but drown in
/// those of others. Where a column is shorter than `least` times the root mean square length of
/// all, random signs of one size are added to it, of the square length that is missing.
///
/// start   of the stream that the signs come from
void tell_apart_short_words(Eigen::MatrixXf& factors, double least, std::uint64_t start);

}  // namespace velmora::trainer
