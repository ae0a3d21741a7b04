// Opens model and matrix files, and logs when that fails.
//
// Every reader and writer of these files reports such a failure in one way: a line at level error
// under its own name, with a text of its own before the path. Used by the matrix files and the
// model record. Not installed. Tested by tests/latent/matrix-files-test.cpp.
#pragma once

#include <fstream>
#include <optional>
#include <string>

#include "../support/log-site.hpp"

namespace VX::Dialog::detail {

/// What a failure to open a file is logged as.
struct OpeningFailure {
  zu::log::Category* log;
  const char* function;
  const char* text;  ///< before the path
};

/// The content of the file; nothing, and a log line, when it can't be opened.
std::optional<std::string> read_or_log(const std::string& path, const OpeningFailure& failure);

/// The file, truncated; a stream that failed, and a log line, when it can't be opened.
std::ofstream create_or_log(const std::string& path, const OpeningFailure& failure);

}  // namespace VX::Dialog::detail
