// Dense and sparse matrices as text files, and prints of them for debugging.
//
// Formats: docs/file-formats.md. Numbers have six significant digits. Readers go by white space and
// do not look at the state of the file between numbers: in a file that ends early or holds text,
// the remaining elements are what a failed stream extraction leaves. Failures to open are logged
// under "LibVelmora.Corpus". Calls on different files and matrices may overlap. Tested by
// tests/latent/matrix-files-test.cpp.
#pragma once

#include <string>

#include <velmora/eigen.hpp>
#include <velmora/export.hpp>

/// An Eigen print format with full precision, brackets and commas. No routine prints through it.
extern VELMORA_EXPORT Eigen::IOFormat HeavyFmt;

namespace VX::Dialog {

/// Reads a dense matrix file; the matrix takes the shape that the header gives.
/// False, matrix unchanged: the file can't be opened. Throws std::bad_alloc on a huge header.
VELMORA_EXPORT bool read_mat_data(char* path, Eigen::MatrixXd& matrix);

/// Reads a dense matrix file into a matrix that has its shape already. Numbers are read as doubles
/// and cut toward zero. Element k of file column i goes to position i * rows + k of the matrix's
/// storage; what falls outside is dropped.
/// False: the file can't be opened.
VELMORA_EXPORT bool read_mat_data(char* path, Eigen::MatrixXi& matrix);

/// Writes a dense matrix file. False: the file can't be opened; a failed write is not reported.
VELMORA_EXPORT bool write_mat_data(std::string path, Eigen::MatrixXd& matrix);
/// Writes a dense matrix file. False: the file can't be opened; a failed write is not reported.
VELMORA_EXPORT bool write_mat_data(char* path, Eigen::MatrixXi& matrix);

/// Reads a sparse matrix file into a matrix that has its shape already; compresses it.
///
/// data_mat   V x S; values outside it are dropped
///
/// True only for a file in which every cell of the matrix is stored. For any other the matrix is
/// loaded and compressed too, two error lines are logged and the result is false. False as well
/// when the file can't be opened, and when word indices of a column do not rise: then what was read
/// so far stays in the matrix, uncompressed.
VELMORA_EXPORT bool read_smat_data(std::string path, Eigen::SparseMatrix<double>& data_mat);

/// Prints "[value value ]" for each column to standard output: every stored value.
VELMORA_EXPORT void print_smat_nnz(Eigen::SparseMatrix<double> matrix);
/// Prints "[value value ]" to standard output: entries above 0 only.
VELMORA_EXPORT void print_vec_nnz(Eigen::VectorXd vector);

}  // namespace VX::Dialog

/// As VX::Dialog::print_vec_nnz.
VELMORA_EXPORT void print_vec_(Eigen::VectorXd vector);
/// The same for a sparse vector.
VELMORA_EXPORT void print_svec_nnz(Eigen::SparseVector<double> vector);
/// Prints "[value value ]" for each column to standard output: entries above 0 only.
VELMORA_EXPORT void print_mat_(Eigen::MatrixXd matrix);
