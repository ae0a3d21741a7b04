// From counts to the tf-idf weights that the factorisation works on.
//
// Gives the same matrix as the library's offline tools (rm_infreq, index, tfidf, cpp_data_format,
// read_smat_data) do on files. Used by training.cpp. Tested by tools/train/tests/corpus-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "corpus.hpp"
#include "sparse-rows.hpp"
#include "vocabulary.hpp"

namespace velmora::trainer {

struct WeightedDocuments {
  /// Documents by dictionary: count times idf, to six significant digits.
  SparseRows rows;
  /// One for each row.
  std::vector<double> weights;
};

/// Documents with fewer than two different words of the dictionary are left out.
///
/// idf             one value for each word of the dictionary
/// label_weights   weights of the documents by their label; 1 for a label that is not in it
WeightedDocuments weigh_documents(const Corpus& corpus,
                                  const std::vector<DictionaryEntry>& dictionary,
                                  const std::vector<double>& idf,
                                  const std::map<std::string, double>& label_weights);

}  // namespace velmora::trainer
