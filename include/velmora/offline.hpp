// Offline corpus tools: from a text corpus to a sparse matrix file, file by file.
//
//   text corpus --rm_infreq--> normal form --index--> word-id lines --tfidf--> weighted rows
//     --cpp_data_format--> sparse matrix file, which read_smat_data reads
//
// Formats: docs/file-formats.md. In a text corpus a line is a document and only the blank separates
// words. A file that can't be opened for reading reads as empty, and one that can't be written
// swallows what is written; neither is reported. Each routine reads its input to the end before it
// opens its output, but for index. Calls on different files may overlap. Tested by
// tests/offline/offline-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/export.hpp>

namespace VX::Dialog {

/// get_word_ids, and a log line with the number of entries.
VELMORA_EXPORT std::map<std::string, int> indexwords(std::string dictionary_path);

/// Replaces each word of a corpus by its id: "id " for each word, a newline for each line.
///
/// Returns the number of entries of the vocabulary. Throws std::out_of_range ("map::at:  key not
/// found") at the first word that is not in the dictionary; what was written so far stays.
VELMORA_EXPORT int index(std::string corpus_path, std::string output_path,
                         std::string dictionary_path);

/// Brings a corpus into normal form: each word followed by one blank, each line by a newline. Keeps
/// every word: the threshold has no effect. Input and output may be one file.
VELMORA_EXPORT void rm_infreq(std::string input_path, std::string output_path, int threshold);

/// Weights word-id lines by an idf file: read_data, idf, write_data. The three flags have no
/// effect.
VELMORA_EXPORT void tfidf(std::string corpus_path, std::string idf_path, bool tf_flag,
                          bool idf_flag, bool norm_flag, std::string output_path);

/// Reads word-id lines: for each line a row from word id to count. The first token of a line that
/// is not an int ends it.
VELMORA_EXPORT std::vector<std::map<int, double>> read_data(std::string path);

/// A copy of the rows with each count multiplied by the word's idf; a word without one keeps its
/// count, which is logged at level info.
VELMORA_EXPORT std::vector<std::map<int, double>> idf(
    const std::vector<std::map<int, double>>& rows, std::string idf_path);

/// Writes weighted rows: "id value " for each entry, six significant digits, a newline for each
/// row.
VELMORA_EXPORT void write_data(const std::vector<std::map<int, double>>& rows, std::string path);

/// Makes a sparse matrix file of weighted rows: a header of the row count and `header_value`, then
/// each row after its number of pairs.
VELMORA_EXPORT void cpp_data_format(std::string input_path, std::string output_path,
                                    int header_value);

}  // namespace VX::Dialog
