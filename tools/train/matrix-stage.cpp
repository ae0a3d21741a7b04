// Implementation of matrix-stage.hpp.
#include "matrix-stage.hpp"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <system_error>

#include <Eigen/SparseCore>

#include <velmora/matrix-files.hpp>
#include <velmora/offline.hpp>

#include "corpus-reader.hpp"
#include "failure.hpp"
#include "interrupt.hpp"
#include "output-file.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;

namespace {

// Known words of a document, as they stand in it, and how many different ones there are.
struct KnownWords {
  std::string line;
  int different = 0;
};

KnownWords known_words(const Document& document,
                       const std::unordered_map<std::string, int>& word_ids) {
  KnownWords known;
  std::vector<int> ids;
  for (const std::string& stem : document.stems) {
    const auto found = word_ids.find(stem);
    if (found != word_ids.end()) {
      known.line += stem + ' ';
      ids.push_back(found->second);
    }
  }
  std::sort(ids.begin(), ids.end());
  known.different = static_cast<int>(std::unique(ids.begin(), ids.end()) - ids.begin());
  return known;
}

// A stage file that lost its end, on a full disk for instance, misses lines or the last line end.
void check_lines(const fs::path& path, std::size_t lines) {
  std::ifstream in(path, std::ios::binary);
  const auto found = static_cast<std::size_t>(
      std::count(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>(), '\n'));
  if (found != lines) {
    throw Failure("stage file " + path.string() + " is not whole: " + std::to_string(found) +
                  " of " + std::to_string(lines) + " lines (is the disk full?)");
  }
}

// Collects documents into shards and takes each full shard through the tools.
class ShardChain {
 public:
  explicit ShardChain(const MatrixStageInput& input) : input_(input) {}

  void add(const Document& document) {
    const KnownWords known = known_words(document, input_.word_ids);
    if (known.different < 2) {
      return;
    }
    if (!shard_) {
      shard_ = std::make_unique<OutputFile>(stage_path(".txt"));
    }
    shard_->write(known.line + '\n');
    row_sizes_.push_back(known.different);
    const auto weight = input_.label_weights.find(document.label);
    result_.weights.push_back(weight == input_.label_weights.end() ? 1.0 : weight->second);
    if (row_sizes_.size() == input_.documents_per_shard) {
      finish_shard();
    }
  }

  WeightedDocuments finish() {
    if (shard_) {
      finish_shard();
    }
    return std::move(result_);
  }

 private:
  fs::path stage_path(const char* suffix) const {
    char name[48];
    std::snprintf(name, sizeof name, "shard-%05d%s", shard_number_, suffix);
    return input_.work_directory / name;
  }

  void finish_shard() {
    check_interrupt();
    shard_->close();
    shard_.reset();
    const fs::path text = stage_path(".txt");
    const fs::path normal = stage_path(".normal");
    const fs::path ids = stage_path(".ids");
    const fs::path weighted = stage_path(".weighted");
    const fs::path matrix = stage_path(".matrix");
    const std::size_t documents = row_sizes_.size();

    VX::Dialog::rm_infreq(text, normal, /*threshold=*/0);
    check_lines(normal, documents);
    VX::Dialog::index(normal, ids, input_.dictionary);
    check_lines(ids, documents);
    VX::Dialog::tfidf(ids, input_.idf, true, true, false, weighted);
    check_lines(weighted, documents);
    VX::Dialog::cpp_data_format(weighted, matrix, static_cast<int>(input_.word_ids.size()));
    check_lines(matrix, documents + 1);
    append_matrix(matrix);

    for (const fs::path& path : {text, normal, ids, weighted, matrix}) {
      std::error_code ignored;  // a stage file left behind goes with its directory
      input_.keep_stage_files || fs::remove(path, ignored);
    }
    row_sizes_.clear();
    ++shard_number_;
  }

  void append_matrix(const fs::path& path) {
    Eigen::SparseMatrix<double> matrix(static_cast<Eigen::Index>(input_.word_ids.size()),
                                       static_cast<Eigen::Index>(row_sizes_.size()));
    matrix.reserve(row_sizes_);
    // The result tells whether every cell of the matrix is stored, which is never the case here.
    (void)VX::Dialog::read_smat_data(path, matrix);
    SparseRows& rows = result_.rows;
    for (Eigen::Index document = 0; document != matrix.outerSize(); ++document) {
      for (Eigen::SparseMatrix<double>::InnerIterator it(matrix, document); it; ++it) {
        rows.column.push_back(static_cast<std::int32_t>(it.row()));
        rows.value.push_back(static_cast<float>(it.value()));
      }
      rows.row_begin.push_back(rows.column.size());
      if (rows.row_size(rows.rows() - 1) !=
          static_cast<std::size_t>(row_sizes_[static_cast<std::size_t>(document)])) {
        throw Failure("stage file " + path.string() + " does not hold what was written, document " +
                      std::to_string(document + 1));
      }
    }
  }

  const MatrixStageInput& input_;
  WeightedDocuments result_;
  std::unique_ptr<OutputFile> shard_;
  std::vector<int> row_sizes_;
  int shard_number_ = 0;
};

}  // namespace

WeightedDocuments weighted_documents(const MatrixStageInput& input,
                                     const std::function<void(double bytes)>& report) {
  CorpusInput stems;
  stems.files = {input.stems};
  stems.stemmed = true;
  ShardChain chain(input);
  for_each_document(
      stems, [&](const Document& document) { chain.add(document); }, report);
  return chain.finish();
}

}  // namespace velmora::trainer
