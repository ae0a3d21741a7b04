// From lines to the weighted matrix: reading, choosing words, weights.
#include "corpus.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/matrix-files.hpp>
#include <velmora/offline.hpp>

#include "failure.hpp"
#include "kit/fixtures.hpp"
#include "random.hpp"
#include "vocabulary.hpp"
#include "weighting.hpp"

namespace velmora::trainer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string stems_of(const CorpusInput& input) {
  std::string lines;
  for_each_document(
      input, [&](const Document& document) { lines += stem_line(document); }, [](double) {});
  return lines;
}

const std::tuple<const char*, std::string, const char*> kLineCases[] = {
    {"no label", "go up\n", "\tgo up\n"},
    {"blanks around words", "a\t  go   up \n", "a\tgo up\n"},
    {"an empty line stays a document", "\na\tgo\n", "\t\na\tgo\n"},
    {"end without a newline", "a\tgo\nb\tup", "a\tgo\nb\tup\n"},
    {"line ends of another system",
     "\xef\xbb\xbf"
     "a\tgo\r\nb\tup\r\n",
     "a\tgo\nb\tup\n"},
};

TEST(CorpusReader, LinesBecomeDocuments) {
  const test::TemporaryFolder directory;
  for (const auto& [what, text, stems] : kLineCases) {
    CorpusInput input;
    input.stemmed = true;
    input.files = {directory.write("corpus", text)};
    EXPECT_EQ(stems_of(input), stems) << what;
  }
}

TEST(CorpusReader, AStemSetIsSortedAndWithoutRepeats) {
  const test::TemporaryFolder directory;
  CorpusInput input;
  input.stemmed = true;
  input.stem_sets = true;
  input.files = {directory.write("corpus", "a\tup go up \xc3\xa9 Z\nb\t\n")};
  EXPECT_EQ(stems_of(input), "a\tZ go up \xc3\xa9\nb\t\n");
}

const std::tuple<const char*, std::string, const char*> kFaultCases[] = {
    {"a byte of Latin-1", "go\nca\xe9 ra\n", "corpus:2: ill-formed UTF-8"},
    {"a character cut off", "go\xe3\x81", "corpus:1: ill-formed UTF-8"},
    {"a form too long", "\xc0\xaf", "corpus:1: ill-formed UTF-8"},
    {"half of a pair", "\xed\xa0\x80", "corpus:1: ill-formed UTF-8"},
    {"beyond the last character", "\xf4\x90\x80\x80", "corpus:1: ill-formed UTF-8"},
    {"a binary file", std::string("go\nin\nup\0", 9), "corpus:3: a zero byte"},
    {"white space in a stem", "a\tgo\vup", "corpus:1: a word holds white space"},
};

TEST(CorpusReader, WhatIsNotTextIsRefusedWithItsLine) {
  const test::TemporaryFolder directory;
  CorpusInput input;
  input.stemmed = true;
  for (const auto& [what, text, message] : kFaultCases) {
    SCOPED_TRACE(what);
    input.files = {directory.write("corpus", text)};
    try {
      ADD_FAILURE() << stems_of(input);
    } catch (const Failure& failure) {
      EXPECT_THAT(failure.what(), HasSubstr(message));
    }
  }
  const std::string text = "a\tcaf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x8e\xb5 \xed\x9f\xbf\n";
  input.files = {directory.write("corpus", text)};
  EXPECT_EQ(stems_of(input), text);
}

Corpus corpus_of(const test::TemporaryFolder& directory, const std::string& stems) {
  CorpusInput input;
  input.stemmed = true;
  input.files = {directory.write("corpus", stems)};
  return read_corpus(input, [](double) {});
}

TEST(Corpus, CountsWordsOfDifferentDocuments) {
  const test::TemporaryFolder directory;
  const Corpus corpus = corpus_of(directory, "x\tb a b\ny\tb a b\ny\t\nz\ta b b\nb c\n");
  EXPECT_EQ(corpus.lines, 5U);
  EXPECT_THAT(corpus.words, ElementsAre("b", "a", "c"));
  EXPECT_THAT(corpus.labels, ElementsAre("x", "y", "z", ""));
  EXPECT_THAT(corpus.label_of, ElementsAre(0, 2, 3));
  EXPECT_THAT(corpus.counts.row_begin, ElementsAre(0, 2, 4, 6));
  EXPECT_THAT(corpus.counts.column, ElementsAre(0, 1, 0, 1, 0, 2));
  EXPECT_THAT(corpus.counts.value, ElementsAre(2, 1, 2, 1, 1, 1));
}

std::vector<std::string> words_of(const std::vector<DictionaryEntry>& dictionary) {
  std::vector<std::string> words;
  for (const DictionaryEntry& entry : dictionary) {
    words.push_back(entry.word);
  }
  return words;
}

TEST(Vocabulary, FrequentEverydayWordsInByteOrder) {
  const test::TemporaryFolder directory;
  const Corpus corpus = corpus_of(directory,
                                  "x\tb a a\nx\tb \xc3\xa9 Z\ny\tb Z \xc3\xa9\ny\tc\n"
                                  "x\ta b\nother\tc c d\n");
  const DocumentFrequencies frequencies = count_documents(corpus, {"x", "y"});
  EXPECT_EQ(frequencies.documents, 5U);
  EXPECT_THAT(words_of(choose_dictionary(corpus, frequencies, 10, 1)),
              ElementsAre("Z", "a", "b", "c", "\xc3\xa9"));
  EXPECT_THAT(words_of(choose_dictionary(corpus, frequencies, 10, 3)), ElementsAre("b"));
  // Z, a and e acute stand in two documents each.
  const auto dictionary = choose_dictionary(corpus, frequencies, 3, 1);
  EXPECT_THAT(words_of(dictionary), ElementsAre("Z", "a", "b"));
  EXPECT_EQ(count_documents(corpus, {}).documents, 6U);

  write_idf(idf_values(dictionary, frequencies.documents, 0.25), directory.path("idf"));
  EXPECT_EQ(directory.read("idf"), "0 0.916291\n1 0.916291\n2 0.25\n");
}

TEST(Weighting, LabelsWeighDocumentsOfTwoKnownWords) {
  const test::TemporaryFolder directory;
  const Corpus corpus = corpus_of(
      directory, "x\tc a other a\ny\ta a\ny\tb c\n\tother a b\nx\tunknown words\nx\ta b c\n");
  const std::vector<DictionaryEntry> dictionary = {{"a", 1, 1}, {"b", 3, 1}, {"c", 0, 1}};
  const WeightedDocuments documents =
      weigh_documents(corpus, dictionary, {0.5, 2, 0.123457}, {{"x", 4.0}, {"", 0.5}});
  EXPECT_THAT(documents.rows.row_begin, ElementsAre(0, 2, 4, 6, 9));
  EXPECT_THAT(documents.rows.column, ElementsAre(0, 2, 1, 2, 0, 1, 0, 1, 2));
  EXPECT_THAT(documents.rows.value,
              ElementsAre(1.0F, 0.123457F, 2.0F, 0.123457F, 0.5F, 2.0F, 0.5F, 2.0F, 0.123457F));
  EXPECT_THAT(documents.weights, ElementsAre(4.0, 1.0, 0.5, 4.0));
}

// Stems of 300 documents over the words w1 to w40, some of them many times in one.
std::string random_stems() {
  std::string text;
  for (std::uint64_t place = 0; place != 6000; ++place) {
    text += "w" + std::to_string(1 + random_bits(7, place) % 40 * random_bits(8, place) % 40);
    text += place % 20 == 19 ? "\n" : " ";
  }
  return text;
}

// The library's offline tools, from files to files.
Eigen::SparseMatrix<double> chain_matrix(const test::TemporaryFolder& directory, int documents,
                                         int words) {
  const std::string base = directory.path("chain");
  VX::Dialog::rm_infreq(directory.path("corpus"), base + ".normal", 0);
  VX::Dialog::index(base + ".normal", base + ".ids", directory.path("dictionary"));
  VX::Dialog::tfidf(base + ".ids", directory.path("idf"), true, true, false, base + ".weighted");
  VX::Dialog::cpp_data_format(base + ".weighted", base + ".matrix", words);
  Eigen::SparseMatrix<double> matrix(words, documents);
  (void)VX::Dialog::read_smat_data(base + ".matrix", matrix);  // says whether every cell is stored
  return matrix;
}

TEST(Weighting, IsTheMatrixOfTheOfflineTools) {
  const test::LogCapture quiet;
  const test::TemporaryFolder directory;
  const Corpus corpus = corpus_of(directory, random_stems());
  const DocumentFrequencies frequencies = count_documents(corpus, {});
  const auto dictionary = choose_dictionary(corpus, frequencies, corpus.words.size(), 1);
  const std::vector<double> idf = idf_values(dictionary, frequencies.documents, 0.05);
  write_dictionary(dictionary, directory.path("dictionary"));
  write_idf(idf, directory.path("idf"));
  const SparseRows rows = weigh_documents(corpus, dictionary, idf, {}).rows;
  ASSERT_EQ(rows.rows(), 300U);

  const Eigen::SparseMatrix<double> matrix =
      chain_matrix(directory, static_cast<int>(rows.rows()), static_cast<int>(dictionary.size()));
  ASSERT_EQ(rows.stored(), static_cast<std::size_t>(matrix.nonZeros()));
  std::size_t place = 0;
  for (Eigen::Index document = 0; document != matrix.outerSize(); ++document) {
    for (Eigen::SparseMatrix<double>::InnerIterator it(matrix, document); it; ++it, ++place) {
      ASSERT_EQ(rows.column[place], it.row()) << document;
      ASSERT_EQ(rows.value[place], static_cast<float>(it.value())) << document;
    }
    ASSERT_EQ(rows.row_begin[static_cast<std::size_t>(document) + 1], place);
  }
}

}  // namespace
}  // namespace velmora::trainer
