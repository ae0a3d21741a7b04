#include "corpus-reader.hpp"

#include <algorithm>
#include <memory>
#include <string_view>
#include <system_error>

#include <fennel/stemmer.hpp>

#include "../../src/support/utf8.hpp"
#include "failure.hpp"
#include "interrupt.hpp"
#include "line-reader.hpp"
#include "parallel.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBatchLines = 8192;
constexpr std::size_t kBatchBytes = std::size_t{4} << 20U;
constexpr std::size_t kLinesPerPiece = 128;

struct Batch {
  std::size_t first_line = 0;
  std::vector<std::string> lines;
  std::size_t bytes = 0;
};

// False at the end of the file.
bool read_batch(LineReader& reader, Batch& batch) {
  batch.first_line = reader.line_number() + 1;
  batch.lines.clear();
  batch.bytes = 0;
  std::string line;
  while (batch.lines.size() < kBatchLines && batch.bytes < kBatchBytes && reader.next(line)) {
    batch.bytes += line.size() + 1;
    batch.lines.push_back(line);
  }
  return !batch.lines.empty();
}

void split_at_blanks(std::string_view text, std::vector<std::string>& words) {
  for (std::size_t begin = text.find_first_not_of(' '); begin != std::string_view::npos;) {
    const std::size_t end = std::min(text.find(' ', begin), text.size());
    words.emplace_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(' ', end);
  }
}

void make_set(std::vector<std::string>& stems) {
  std::sort(stems.begin(), stems.end());
  stems.erase(std::unique(stems.begin(), stems.end()), stems.end());
}

// What a document must not hold: a line of the dictionary ends its word at the first white space,
// so such a word would lose its end, and one without any other character would end the dictionary.
std::string fault_of(const std::vector<std::string>& stems) {
  for (const std::string& stem : stems) {
    if (stem.empty() || stem.find_first_of(" \t\n\v\f\r") != std::string::npos) {
      return "a word holds white space: \"" + stem + "\"";
    }
  }
  return {};
}

// Why a line is not text; empty for text.
std::string why_not_text(const std::string& line) {
  if (line.find('\0') != std::string::npos) {
    return "a zero byte (is it a binary file?)";
  }
  return VX::Dialog::detail::is_utf8(line) ? "" : "ill-formed UTF-8";
}

// A line as a document, or why it is none.
struct Analysis {
  Document document;
  std::string fault;
};

// Turns lines into documents, with a stemmer for each thread: a stemmer serves one caller at a
// time.
class Analyser {
 public:
  explicit Analyser(const CorpusInput& input) : input_(input) {
    for (int worker = 0; !input.stemmed && worker < input.threads; ++worker) {
      stemmers_.push_back(std::make_unique<VX::Dialog::Stemmer>(input.language));
    }
  }

  std::vector<Analysis> analyse(const std::vector<std::string>& lines) {
    std::vector<Analysis> results(lines.size());
    const std::size_t pieces = (lines.size() + kLinesPerPiece - 1) / kLinesPerPiece;
    for_each_piece(input_.threads, pieces, [&](std::size_t piece, int worker) {
      const std::size_t end = std::min((piece + 1) * kLinesPerPiece, lines.size());
      for (std::size_t line = piece * kLinesPerPiece; line != end; ++line) {
        results[line] = analyse(lines[line], worker);
      }
    });
    return results;
  }

 private:
  Analysis analyse(const std::string& line, int worker) {
    Analysis result;
    result.fault = why_not_text(line);
    if (!result.fault.empty()) {
      return result;
    }
    Document& document = result.document;
    const std::size_t tab = line.find('\t');
    const std::string text = tab == std::string::npos ? line : line.substr(tab + 1);
    document.label = tab == std::string::npos ? "" : line.substr(0, tab);
    if (input_.stemmed) {
      split_at_blanks(text, document.stems);
    } else {
      stemmers_[static_cast<std::size_t>(worker)]->stem_sentence(text, document.stems);
    }
    result.fault = fault_of(document.stems);
    if (input_.stem_sets) {
      make_set(document.stems);
    }
    return result;
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
      return 0.0;  // a pipe, or a file whose absence is reported when it is its turn
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
  for (const fs::path& path : input.files) {
    LineReader reader(path);
    while (read_batch(reader, batch)) {
      check_interrupt();
      std::size_t line_number = batch.first_line;
      for (const Analysis& result : analyser.analyse(batch.lines)) {
        if (!result.fault.empty()) {
          throw Failure(path.string() + ":" + std::to_string(line_number) + ": " + result.fault);
        }
        consume(result.document);
        ++line_number;
      }
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
