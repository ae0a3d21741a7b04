// From weights to a term matrix, and from matrices back to vectors.
//
// Neither function keeps state; calls may overlap on different data. Messages go to the log
// category "LibVelmora.Query". Tested by tests/text/text-tables-test.cpp.
#pragma once

#include <map>
#include <vector>

#include <velmora/eigen.hpp>
#include <velmora/export.hpp>

namespace VX::Dialog {

/// Lays weights into a sparse matrix, one column for each entry in key order, also for an empty
/// one.
///
/// weights   sentence id to word id to weight
/// matrix    given empty, V x S or wider; left uncompressed. A word id outside it is logged
///           at level error and dropped; columns beyond it are dropped too.
VELMORA_EXPORT void read_smat_data_OPTIM(const std::map<int, std::map<int, double>>& weights,
                                         Eigen::SparseMatrix<double>& matrix);

/// Appends each column of a matrix to a list of vectors.
VELMORA_EXPORT void mat2vec(const Eigen::MatrixXd& matrix,
                            std::vector<std::vector<double>>& vectors);

}  // namespace VX::Dialog
