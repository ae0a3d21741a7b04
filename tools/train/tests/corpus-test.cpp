// From lines to the weighted matrix: reading, choosing words, shards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "corpus-reader.hpp"
#include "failure.hpp"
#include "matrix-stage.hpp"
#include "temporary-directory.hpp"
#include "vocabulary.hpp"

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
  const TemporaryDirectory directory;
  for (const auto& [what, text, stems] : kLineCases) {
    CorpusInput input;
    input.stemmed = true;
    input.files = {directory.write("corpus", text)};
    EXPECT_EQ(stems_of(input), stems) << what;
  }
}

DocumentFrequencies frequencies_of(const std::vector<std::vector<std::string>>& documents) {
  DocumentFrequencies frequencies;
  for (const auto& stems : documents) {
    count_document({"", stems}, frequencies);
  }
  return frequencies;
}

std::vector<std::string> words_of(const std::vector<DictionaryEntry>& dictionary) {
  std::vector<std::string> words;
  for (const DictionaryEntry& entry : dictionary) {
    words.push_back(entry.word);
  }
  return words;
}

TEST(Vocabulary, FrequentWordsInByteOrder) {
  const DocumentFrequencies frequencies = frequencies_of(
      {{"b", "a", "a"}, {"b", "\xc3\xa9", "Z"}, {"b", "Z", "\xc3\xa9"}, {}, {"c"}, {"a", "b"}});
  EXPECT_EQ(frequencies.documents, 5U);  // the empty one does not count
  EXPECT_THAT(words_of(choose_dictionary(frequencies, 10, 1)),
              ElementsAre("Z", "a", "b", "c", "\xc3\xa9"));
  EXPECT_THAT(words_of(choose_dictionary(frequencies, 10, 3)), ElementsAre("b"));
  // Z, a and e acute stand in two documents each.
  EXPECT_THAT(words_of(choose_dictionary(frequencies, 3, 1)), ElementsAre("Z", "a", "b"));

  const TemporaryDirectory directory;
  write_idf(choose_dictionary(frequencies, 3, 1), frequencies.documents, 0.25, directory / "idf");
  EXPECT_EQ(content_of(directory / "idf"), "0 0.916291\n1 0.916291\n2 0.25\n");
}

TEST(MatrixStage, ShardsMakeOneMatrixOfKnownWords) {
  const TemporaryDirectory directory;
  MatrixStageInput input;
  input.dictionary = directory.write("dictionary", "a\nb\nc\n");
  input.idf = directory.write("idf", "0 0.5\n1 2\n2 0.1234567\n");
  input.word_ids = {{"a", 0}, {"b", 1}, {"c", 2}};
  input.label_weights = {{"x", 4.0}, {"", 0.5}};
  input.stems = directory.write(
      "stems", "x\tc a other a\ny\ta a\ny\tb c\n\tother a b\ny\t\nx\tunknown words\nx\ta b c\n");
  for (std::size_t shard : {1U, 2U, 100U}) {
    SCOPED_TRACE(shard);
    input.work_directory = directory / ("work" + std::to_string(shard));
    std::filesystem::create_directory(input.work_directory);
    input.documents_per_shard = shard;
    const WeightedDocuments documents = weighted_documents(input, [](double) {});
    EXPECT_THAT(documents.rows.row_begin, ElementsAre(0, 2, 4, 6, 9));
    EXPECT_THAT(documents.rows.column, ElementsAre(0, 2, 1, 2, 0, 1, 0, 1, 2));
    EXPECT_THAT(documents.rows.value,
                ElementsAre(1.0F, 0.123457F, 2.0F, 0.123457F, 0.5F, 2.0F, 0.5F, 2.0F, 0.123457F));
    EXPECT_THAT(documents.weights, ElementsAre(4.0, 1.0, 0.5, 4.0));
    EXPECT_TRUE(std::filesystem::is_empty(input.work_directory));
  }
}

}  // namespace
}  // namespace velmora::trainer
