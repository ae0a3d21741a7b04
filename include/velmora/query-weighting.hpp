// From word ids to weights, and the bridge to matrices and back.
//
// No function here keeps state; calls may overlap on different data. Messages go to the log
// category "LibVelmora.Query".
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/eigen.hpp>
#include <velmora/export.hpp>

namespace VX::Dialog {

/// Weights words: count of the word in its sentence times idf.
///
/// word_ids   sentence id to word ids
/// idf        word id to idf; a word without one keeps its count, which is logged at level info
/// weights    out: sentence id to word id to weight; entries of other ids stay
VELMORA_EXPORT void tfidf(const std::map<int, std::vector<int>>& word_ids,
                          const std::map<int, double>& idf,
                          std::map<int, std::map<int, double>>& weights);

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
