// From a text corpus to a sparse term matrix, file by file: what comes before training a model.
//
//   corpus -> rm_infreq -> index -> tfidf -> cpp_data_format -> read_smat_data
//
// The dictionary and the idf table are given; here they are small enough to be written by hand.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include <velmora/matrix-files.hpp>
#include <velmora/offline.hpp>
#include <zu/log.hpp>

namespace {

void write_file(const std::string& path, const std::string& text) {
  std::ofstream(path) << text;
}

void show_file(const std::string& title, const std::string& path) {
  std::cout << title << "\n";
  std::ifstream in(path);
  for (std::string line; std::getline(in, line);) {
    std::cout << "  " << line << "\n";
  }
}

}  // namespace

int main() {
  zu::log::setConsole(false);  // every step tells in the log what it does; here the files speak
  char pattern[] = "/tmp/velmora-chain-XXXXXX";
  if (mkdtemp(pattern) == nullptr) {
    std::perror("offline-chain");
    return 1;
  }
  const std::string folder = std::string(pattern) + "/";
  write_file(folder + "corpus", "the  cat sees the dog\nthe dog sleeps\n");
  write_file(folder + "dictionary", "cat\ndog\nsees\nsleeps\nthe\n");
  write_file(folder + "idf", "0 2\n1 1\n2 2\n3 2\n4 0.5\n");
  show_file("corpus, one document a line:", folder + "corpus");

  VX::Dialog::rm_infreq(folder + "corpus", folder + "normal", 1);
  const int words =
      VX::Dialog::index(folder + "normal", folder + "word-ids", folder + "dictionary");
  show_file("word ids, lines of the dictionary:", folder + "word-ids");

  VX::Dialog::tfidf(folder + "word-ids", folder + "idf", true, true, false, folder + "weighted");
  show_file("word ids with count times idf:", folder + "weighted");

  VX::Dialog::cpp_data_format(folder + "weighted", folder + "matrix", words);
  show_file("sparse matrix file:", folder + "matrix");

  // The result is true only for a file that stores every cell, which no term matrix does; the
  // matrix is filled all the same, and two lines of the log tell the two counts.
  Eigen::SparseMatrix<double> matrix(words, 2);
  (void)VX::Dialog::read_smat_data(folder + "matrix", matrix);
  std::cout << "words by documents:\n" << Eigen::MatrixXd(matrix) << "\n";

  std::filesystem::remove_all(pattern);
  return 0;
}
