#include "teacher.hpp"

#include <algorithm>
#include <cmath>
#include <span>

#include "failure.hpp"
#include "vector-file.hpp"

namespace velmora::trainer {

namespace {

// Brings a vector to length 1. False for one of zeros.
bool make_unit(std::span<float> vector) {
  double square = 0.0;
  for (const float number : vector) {
    square += static_cast<double>(number) * static_cast<double>(number);
  }
  const double length = std::sqrt(square);
  for (float& number : vector) {
    number = static_cast<float>(static_cast<double>(number) / (length > 0.0 ? length : 1.0));
  }
  return length > 0.0;
}

// Mean of all vectors at length 1, those of zeros left out.
std::vector<double> mean_vector(const std::filesystem::path& path) {
  VectorFile file(path);
  std::vector<float> vector(file.columns());
  std::vector<double> sum(file.columns());
  double count = 0.0;
  for (std::size_t line = 0; line != file.rows(); ++line) {
    file.read_row(vector);
    if (make_unit(vector)) {
      std::transform(
          vector.begin(), vector.end(), sum.begin(), sum.begin(),
          [](float number, double total) { return total + static_cast<double>(number); });
      count += 1.0;
    }
  }
  for (double& total : sum) {
    total /= std::max(count, 1.0);
  }
  return sum;
}

// Hands out the teacher's vectors one after the other, as they enter the regression.
class Teacher {
 public:
  Teacher(const std::filesystem::path& path, double mean_share)
      : path_(path), subtrahend_(mean_vector(path)), file_(path), vector_(file_.columns()) {
    for (double& number : subtrahend_) {
      number *= mean_share;
    }
  }

  std::size_t columns() const { return vector_.size(); }

  // The vector of the next line; empty when it has none.
  std::span<const float> next() {
    if (lines_ == file_.rows()) {
      fail_count("fewer");
    }
    ++lines_;
    file_.read_row(vector_);
    if (!make_unit(vector_)) {
      return {};
    }
    for (std::size_t k = 0; k != vector_.size(); ++k) {
      vector_[k] = static_cast<float>(static_cast<double>(vector_[k]) - subtrahend_[k]);
    }
    return make_unit(vector_) ? std::span<const float>(vector_) : std::span<const float>();
  }

  void expect_end() const {
    if (lines_ != file_.rows()) {
      fail_count("more");
    }
  }

 private:
  [[noreturn]] void fail_count(const std::string& relation) const {
    throw Failure(path_.string() + ": " + std::to_string(file_.rows()) + " vectors are " +
                  relation + " than the corpora have lines");
  }

  std::filesystem::path path_;
  std::vector<double> subtrahend_;
  VectorFile file_;
  std::vector<float> vector_;
  std::size_t lines_ = 0;
};

// Ids of the different known words, rising; empty when half of the words or more are unknown.
std::vector<std::int32_t> known_words(std::vector<std::string> stems,
                                      const std::map<std::string, std::int32_t>& word_ids) {
  std::sort(stems.begin(), stems.end());
  stems.erase(std::unique(stems.begin(), stems.end()), stems.end());
  std::vector<std::int32_t> known;
  for (const std::string& stem : stems) {
    const auto entry = word_ids.find(stem);
    if (entry != word_ids.end()) {
      known.push_back(entry->second);
    }
  }
  if (2 * known.size() <= stems.size()) {
    known.clear();
  }
  return known;
}

// Appends the tf-idf row of a text, at length 1.
void append_row(const std::vector<std::int32_t>& words, const std::vector<double>& idf,
                SparseRows& rows) {
  double square = 0.0;
  for (const std::int32_t word : words) {
    square += idf[static_cast<std::size_t>(word)] * idf[static_cast<std::size_t>(word)];
  }
  for (const std::int32_t word : words) {
    rows.column.push_back(word);
    rows.value.push_back(
        static_cast<float>(idf[static_cast<std::size_t>(word)] / std::sqrt(square)));
  }
  rows.row_begin.push_back(rows.column.size());
}

// Adds to X'AE what the last row contributes.
void add_products(std::span<const float> vector, TaughtTexts& texts) {
  const Eigen::Map<const Eigen::RowVectorXf> taught(vector.data(),
                                                    static_cast<Eigen::Index>(vector.size()));
  const std::size_t row = texts.rows.rows() - 1;
  for (std::size_t k = 0; k != texts.rows.row_size(row); ++k) {
    texts.products.row(texts.rows.row_columns(row)[k]) +=
        texts.weights[row] * texts.rows.row_values(row)[k] * taught;
  }
}

}  // namespace

TaughtTexts read_taught_texts(const TeacherInput& input,
                              const std::map<std::string, std::int32_t>& word_ids,
                              const std::vector<double>& idf,
                              const std::function<void(double bytes)>& report) {
  Teacher teacher(input.vectors, input.mean_share);
  TaughtTexts texts;
  texts.products.setZero(static_cast<Eigen::Index>(idf.size()),
                         static_cast<Eigen::Index>(teacher.columns()));
  for_each_document(
      input.corpus,
      [&](const Document& document) {
        const std::span<const float> vector = teacher.next();
        const auto weight = input.label_weights.find(document.label);
        const double weight_of_text = weight == input.label_weights.end() ? 1.0 : weight->second;
        if (vector.empty() || weight_of_text == 0.0) {
          return;
        }
        const std::vector<std::int32_t> words = known_words(document.stems, word_ids);
        if (words.empty()) {
          return;
        }
        append_row(words, idf, texts.rows);
        texts.weights.push_back(static_cast<float>(weight_of_text));
        add_products(vector, texts);
      },
      report);
  teacher.expect_end();
  if (texts.weights.empty()) {
    throw Failure(input.vectors.string() + ": no text has a vector and known words");
  }
  return texts;
}

}  // namespace velmora::trainer
