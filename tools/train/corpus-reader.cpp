// Implementation of corpus-reader.hpp.
#include "corpus-reader.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include <fennel/stemmer.hpp>

#include "failure.hpp"
#include "interrupt.hpp"
#include "parallel.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBatchLines = 8192;
constexpr std::size_t kBatchBytes = std::size_t{4} << 20U;
constexpr std::size_t kLinesPerPiece = 128;
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

struct Batch {
  std::size_t first_line = 0;
  std::vector<std::string> lines;
  std::size_t bytes = 0;
};

// The lines of one file, a batch at a time.
class LineReader {
 public:
  explicit LineReader(const fs::path& path) : path_(path), in_(path, std::ios::binary) {
    std::error_code ignored;  // what can't be looked at can't be opened either
    if (!in_ || fs::is_directory(path, ignored)) {
      throw Failure("cannot read corpus " + path.string() + ": " +
                    std::strerror(in_ ? EISDIR : errno));
    }
  }

  // False at the end of the file.
  bool read(Batch& batch) {
    batch.first_line = next_line_;
    batch.lines.clear();
    batch.bytes = 0;
    std::string line;
    while (batch.lines.size() < kBatchLines && batch.bytes < kBatchBytes &&
           std::getline(in_, line)) {
      batch.bytes += line.size() + 1;
      batch.lines.push_back(cleaned(std::move(line)));
      ++next_line_;
    }
    if (in_.bad()) {
      throw Failure("cannot read corpus " + path_.string() + " to its end");
    }
    return !batch.lines.empty();
  }

 private:
  std::string cleaned(std::string line) const {
    if (next_line_ == 1 && line.starts_with(kByteOrderMark)) {
      line.erase(0, kByteOrderMark.size());
    }
    if (line.ends_with('\r')) {
      line.pop_back();
    }
    return line;
  }

  fs::path path_;
  std::ifstream in_;
  std::size_t next_line_ = 1;
};

void split_at_blanks(std::string_view text, std::vector<std::string>& words) {
  for (std::size_t begin = text.find_first_not_of(' '); begin != std::string_view::npos;) {
    const std::size_t end = std::min(text.find(' ', begin), text.size());
    words.emplace_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(' ', end);
  }
}

// Turns lines into documents, with a stemmer for each thread: a stemmer serves one caller at a
// time.
class Analyser {
 public:
  explicit Analyser(const CorpusInput& input) : input_(input) {
    for (int worker = 0; !input.stemmed && worker < input.threads; ++worker) {
      stemmers_.push_back(std::make_unique<VX::Dialog::Stemmer>(input.language));
    }
  }

  void analyse(const fs::path& path, const Batch& batch, std::vector<Document>& documents) {
    documents.assign(batch.lines.size(), {});
    const std::size_t pieces = (batch.lines.size() + kLinesPerPiece - 1) / kLinesPerPiece;
    for_each_piece(input_.threads, pieces, [&](std::size_t piece, int worker) {
      const std::size_t end = std::min((piece + 1) * kLinesPerPiece, batch.lines.size());
      for (std::size_t line = piece * kLinesPerPiece; line != end; ++line) {
        documents[line] = document_of(batch.lines[line], worker);
      }
    });
    for (std::size_t line = 0; line != documents.size(); ++line) {
      check_stems(documents[line], path, batch.first_line + line);
    }
  }

 private:
  Document document_of(const std::string& line, int worker) {
    Document document;
    const std::size_t tab = line.find('\t');
    const std::string text = tab == std::string::npos ? line : line.substr(tab + 1);
    document.label = tab == std::string::npos ? "" : line.substr(0, tab);
    if (input_.stemmed) {
      split_at_blanks(text, document.stems);
    } else {
      stemmers_[static_cast<std::size_t>(worker)]->stem_sentence(text, document.stems);
    }
    return document;
  }

  // A dictionary line ends its word at the first white space, so such a word would lose its end,
  // and one without any other character would end the dictionary.
  static void check_stems(const Document& document, const fs::path& path, std::size_t line) {
    for (const std::string& stem : document.stems) {
      if (stem.empty() || stem.find_first_of(" \t\n\v\f\r") != std::string::npos) {
        throw Failure(path.string() + ", line " + std::to_string(line) +
                      ": a word holds white space: \"" + stem + "\"");
      }
    }
  }

  const CorpusInput& input_;
  std::vector<std::unique_ptr<VX::Dialog::Stemmer>> stemmers_;
};

}  // namespace

double corpus_size(const CorpusInput& input) {
  double total = 0.0;
  for (const fs::path& path : input.files) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) {
      return 0.0;  // a pipe, or a file whose absence is told when it is its turn
    }
    total += static_cast<double>(size);
  }
  return total;
}

void for_each_document(const CorpusInput& input,
                       const std::function<void(const Document&)>& consume,
                       const std::function<void(double bytes)>& report) {
  Analyser analyser(input);
  Batch batch;
  std::vector<Document> documents;
  for (const fs::path& path : input.files) {
    LineReader reader(path);
    while (reader.read(batch)) {
      check_interrupt();
      analyser.analyse(path, batch, documents);
      std::for_each(documents.begin(), documents.end(), consume);
      report(static_cast<double>(batch.bytes));
    }
  }
}

std::string stem_line(const Document& document) {
  std::string line = document.label + '\t';
  for (std::size_t k = 0; k != document.stems.size(); ++k) {
    line += (k == 0 ? "" : " ") + document.stems[k];
  }
  return line + '\n';
}

}  // namespace velmora::trainer
