#include "snapshot-reader.hpp"

#include <algorithm>

#include <velmora/snapshot.hpp>

#include "../support/number-text.hpp"
#include "../support/text-file.hpp"

namespace VX::Dialog {

namespace detail {

Snapshot read_snapshot(const std::string& path) {
  Snapshot snapshot;
  const std::string text = read_text_file(path).value_or("");
  LineReader lines(text);
  std::string_view line;
  std::size_t dim = 0;
  while (lines.next(line)) {
    int row = 0;
    if (!NumberReader(line).read(row)) {
      break;
    }
    // Missing lines of a cut record read as empty ones.
    lines.next(line);  // the rule ids are for human readers only
    lines.next(line);
    StemSet stems = tokens_of(line);
    std::sort(stems.begin(), stems.end());
    stems.erase(std::unique(stems.begin(), stems.end()), stems.end());
    lines.next(line);
    std::vector<double> vector = numbers_of(line, dim);
    dim = vector.size();
    snapshot.insert_or_assign(std::move(stems), std::move(vector));
  }
  return snapshot;
}

}  // namespace detail

detail::VectorTable load_precompiled_ls(const std::string& path) {
  detail::VectorTable vectors;
  const std::string text = detail::read_text_file(path).value_or("");
  detail::LineReader lines(text);
  std::string_view line;
  lines.next(line);  // the first line is skipped, whatever it holds
  while (lines.next(line)) {
    vectors.push_back(detail::numbers_of(line, vectors.empty() ? 0 : vectors.back().size()));
  }
  return vectors;
}

}  // namespace VX::Dialog
