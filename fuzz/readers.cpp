// Readers of files, one function a format: what they read is held against a plain reading through
// streams, and what the library writes of it against a second round.
#include <algorithm>
#include <iterator>
#include <limits>
#include <new>
#include <set>
#include <sstream>
#include <stdexcept>

#include <velmora/dictionary.hpp>
#include <velmora/error.hpp>
#include <velmora/evaluation.hpp>
#include <velmora/matrix-files.hpp>
#include <velmora/offline.hpp>
#include <velmora/rules.hpp>
#include <velmora/similarity.hpp>
#include <velmora/snapshot.hpp>
#include <velmora/wordsense-model.hpp>

#include "engine/velmora-private.hpp"
#include "kit/exported-chain.hpp"
#include "snapshot/snapshot-reader.hpp"
#include "support.hpp"

namespace fuzz {

using namespace VX::Dialog;

namespace {

// Beyond this many elements, or columns without any, a second reading takes too long.
constexpr std::int64_t kMostElements = 1 << 16;

std::vector<double> numbers_of(const std::string& line) {
  std::istringstream in(line);
  return {std::istream_iterator<double>(in), {}};
}

struct Header {
  int first = 0;
  int second = 0;
  std::int64_t elements() const {
    return std::int64_t{std::max(first, 0)} * std::int64_t{std::max(second, 0)};
  }
  bool is_small() const { return elements() <= kMostElements && first <= kMostElements; }
};

Header read_header(std::istream& in) {
  Header header;
  in >> header.first;
  in >> header.second;
  return header;
}

}  // namespace

void dictionary(const std::string& input) {
  std::map<std::string, int> expected;
  int word_id = 0;
  for (const std::string& line : lines_of(input)) {
    std::string word;
    if (!(std::istringstream(line) >> word)) {
      break;
    }
    expected[word] = word_id++;
  }
  std::string path = folder().write("dictionary", input);
  require(get_word_ids(path) == expected, "a word has the number of its last line");
}

void idf(const std::string& input) {
  std::map<int, double> expected;
  for (const std::string& line : lines_of(input)) {
    int word_id = 0;
    double value = 0.0;
    if (!(std::istringstream(line) >> word_id >> value)) {
      break;
    }
    expected[word_id] = value;
  }
  std::string path = folder().write("idf", input);
  require(load_idf(path) == expected, "the idf table is that of a stream");
}

void model(const std::string& input) {
  wordsense_model read;
  require(read_wordsense_model(folder().write("model", input), read), "the file can be opened");
  std::istringstream in(input);
  wordsense_model expected;
  in >> expected.dim;
  in >> expected.lambda;
  in >> expected.missing_weight;
  require(read.dim == expected.dim && test::same_bits({read.lambda, read.missing_weight},
                                                      {expected.lambda, expected.missing_weight}),
          "the scalars are those of a stream");

  std::string path = folder().path("written");
  require(write_wordsense_model(path.data(), read), "the model can be written");
  const std::string text = folder().read("written");
  require(read_wordsense_model(path, read) && write_wordsense_model(path.data(), read) &&
              folder().read("written") == text,
          "what was written is written again");
}

void matrix_double(const std::string& input) {
  Eigen::MatrixXd matrix;
  std::string path = folder().write("matrix", input);
  try {
    require(read_mat_data(path.data(), matrix), "the file can be opened");
  } catch (const std::bad_alloc&) {
    return;
  }
  std::istringstream in(input);
  const Header header = read_header(in);
  require(matrix.cols() == std::max(header.first, 0) && matrix.rows() == std::max(header.second, 0),
          "the shape is that of the header");
  if (!header.is_small()) {
    return;
  }
  double value = 0.0;
  for (const double element : matrix.reshaped()) {
    in >> value;
    require(test::same_bits({element}, {value}), "an element is what a stream reads");
  }
  require(write_mat_data(path, matrix), "the matrix can be written");
  const std::string text = folder().read("matrix");
  require(read_mat_data(path.data(), matrix) && write_mat_data(path, matrix) &&
              folder().read("matrix") == text,
          "what was written is written again");
}

void matrix_int(const std::string& input) {
  Eigen::MatrixXi matrix = Eigen::MatrixXi::Constant(3, 4, -1);
  std::string path = folder().write("matrix", input);
  require(read_mat_data(path.data(), matrix), "the file can be opened");
  std::istringstream in(input);
  const Header header = read_header(in);
  if (!header.is_small()) {
    return;
  }
  Eigen::MatrixXi expected = Eigen::MatrixXi::Constant(3, 4, -1);
  double value = 0.0;
  for (std::int64_t element = 0; element != header.elements(); ++element) {
    in >> value;
    const std::int64_t column = element / header.second;
    const std::int64_t place = column * expected.rows() + element % header.second;
    if (place < expected.size()) {
      expected.data()[place] = static_cast<int>(std::clamp(
          value, double{std::numeric_limits<int>::min()}, double{std::numeric_limits<int>::max()}));
    }
  }
  require(matrix == expected, "elements are what a stream reads, cut toward zero");
}

void matrix_sparse(const std::string& input) {
  Eigen::SparseMatrix<double> matrix(4, 3);
  const bool is_full = read_smat_data(folder().write("matrix", input), matrix);
  require(!is_full || matrix.isCompressed(), "a matrix that was read is compressed");
  for (Eigen::Index column = 0; column != matrix.cols(); ++column) {
    Eigen::Index previous = -1;
    for (Eigen::SparseMatrix<double>::InnerIterator entry(matrix, column); entry; ++entry) {
      require(entry.row() > previous && entry.row() < matrix.rows(),
              "rows of a column rise and lie inside");
      previous = entry.row();
    }
  }
}

void snapshot(const std::string& input) {
  std::map<std::vector<std::string>, std::vector<double>> expected;
  std::vector<std::string> lines = lines_of(input);
  int row = 0;
  for (std::size_t first = 0; first < lines.size(); first += 4) {
    if (!(std::istringstream(lines[first]) >> row)) {
      break;
    }
    lines.resize(std::max(lines.size(), first + 4));
    std::istringstream words(lines[first + 2]);
    const std::set<std::string> stems{std::istream_iterator<std::string>(words), {}};
    expected[{stems.begin(), stems.end()}] = numbers_of(lines[first + 3]);
  }
  const std::string name = "snapshot";
  const std::string path = folder().write(test::kLanguage + "/model/" + name, input);
  const auto records = detail::read_snapshot(path);
  require(records == expected, "records are those of a line by line reading");

  std::string base = folder().path();
  std::string language = test::kLanguage;
  [[maybe_unused]] static const bool model_written = (test::write_model(folder()), true);
  const test::Rules rules = {{1, {"go stop"}}, {2, {"up"}}, {3, {"stop go"}}, {5, {"walk"}}};
  VelmoraPrivate index;
  index.xSetModel(base, language);
  require(index.xLoadDialogVectorsFromFile(name, rules, /*compileNewRules=*/false),
          "the index load finds the file");
  for (const auto& [rule_id, stems] : index.fRuleWords) {
    const auto rule_row = static_cast<std::size_t>(index.fRuleRows.at(rule_id));
    require(index.fRuleVectors.at(rule_row) == records.at(stems), "a rule has its stored vector");
  }

  VelmoraPrivate merged;
  merged.xSetModel(base, language);
  const std::string saved = test::kLanguage + "/model/index";
  require(merged.xLoadDialogVectorsFromFile(name, rules, /*compileNewRules=*/true),
          "the merge load finds the file");
  require(merged.fRuleVectors.size() == 3 && merged.fRuleWords.size() == 4,
          "the merge load has all rules");
  const std::string text = folder().read(saved);
  require(merged.xLoadDialogVectorsFromFile("index", rules, /*compileNewRules=*/true) &&
              folder().read(saved) == text,
          "what was saved is saved again");
}

void vector_list(const std::string& input) {
  std::vector<std::vector<double>> expected;
  for (const std::string& line : lines_of(input)) {
    expected.push_back(numbers_of(line));
  }
  if (!expected.empty()) {
    expected.erase(expected.begin());
  }
  require(load_precompiled_ls(folder().write("vectors", input)) == expected,
          "each line but the first is a vector");
}

void corpus(const std::string& input) {
  const std::string text = folder().write("corpus", input);
  rm_infreq(text, folder().path("normal"), 1);
  const std::string normal = folder().read("normal");
  rm_infreq(folder().path("normal"), folder().path("normal"), 1);
  require(folder().read("normal") == normal, "a normal form stays what it is");
  const std::string words = folder().write("dictionary", "go\nstop\nup\nwalk\n");
  try {
    require(index(text, folder().path("ids"), words) == 4, "the vocabulary has four words");
    require(read_data(folder().path("ids")).size() == lines_of(input).size(),
            "each line has its ids");
  } catch (const std::out_of_range&) {
    // A word that is not in the dictionary.
  }
}

void word_ids(const std::string& input) {
  std::vector<std::map<int, double>> expected;
  for (const std::string& line : lines_of(input)) {
    std::istringstream in(line);
    auto& row = expected.emplace_back();
    for (int word_id = 0; in >> word_id;) {
      row[word_id] += 1.0;
    }
  }
  const std::string path = folder().write("ids", input);
  require(read_data(path) == expected, "rows are those of a stream");
  const std::string table = folder().write("idf", "0 2\n1 1\n2 0.5\n");
  tfidf(path, table, true, true, true, folder().path("rows"));
  require(lines_of(folder().read("rows")).size() == expected.size(), "each line has its row");
}

void weighted_rows(const std::string& input) {
  const std::string output = folder().path("formatted");
  cpp_data_format(folder().write("rows", input), output, 5);
  const std::size_t row_count = lines_of(input).size();
  const std::vector<std::string> lines = lines_of(folder().read("formatted"));
  require(lines.size() == row_count + 1 && lines.front() == std::to_string(row_count) + " 5",
          "the header holds the number of rows");
  Eigen::SparseMatrix<double> matrix(6, 4);
  (void)read_smat_data(output, matrix);  // true only if there is no gap
}

void vector_pairs(const std::string& input) {
  const std::string path = folder().write("pairs", input);
  get_sim(path, folder().path("cosines"));
  const std::size_t vector_count = load_precompiled_ls(path).size();
  require(lines_of(folder().read("cosines")).size() == (vector_count + 1) / 2,
          "each pair has its cosine");
}

void rules_file(const std::string& input) {
  const std::string path = folder().write("rules", input);
  try {
    const std::vector<velmora::Rule> rules = velmora::read_rules(path);
    std::string text;
    for (const velmora::Rule& rule : rules) {
      require(!rule.sentences.empty(), "a rule has a sentence");
      require(rule.lines.size() == rule.sentences.size(), "a sentence has its line");
      for (const std::string& sentence : rule.sentences) {
        text += std::to_string(rule.id) + "\t" + sentence + "\n";
      }
    }
    const std::vector<velmora::Rule> again = velmora::read_rules(folder().write("again", text));
    require(std::equal(rules.begin(), rules.end(), again.begin(), again.end(),
                       [](const velmora::Rule& one, const velmora::Rule& other) {
                         return one.id == other.id && one.sentences == other.sentences;
                       }),
            "what was read is read again");
  } catch (const velmora::Error& error) {
    require(std::string(error.what()).starts_with(path), "an error names its file");
  }
}

void expectations_file(const std::string& input) {
  const std::string path = folder().write("expectations", input);
  try {
    std::string text;
    const std::vector<velmora::Expectation> expectations = velmora::read_expectations(path);
    for (const velmora::Expectation& expectation : expectations) {
      text += (expectation.id ? std::to_string(*expectation.id) : "-") + "\t" +
              expectation.sentence + "\n";
    }
    const auto again = velmora::read_expectations(folder().write("again", text));
    require(std::equal(expectations.begin(), expectations.end(), again.begin(), again.end(),
                       [](const velmora::Expectation& one, const velmora::Expectation& other) {
                         return one.id == other.id && one.sentence == other.sentence;
                       }),
            "what was read is read again");
  } catch (const velmora::Error& error) {
    require(std::string(error.what()).starts_with(path), "an error names its file");
  }
}

}  // namespace fuzz
