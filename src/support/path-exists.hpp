// Whether a file or folder is there.
//
// Used by model selection and the warm start. Not installed. Tested by
// tests/engine/model-selection-test.cpp and tests/engine/warm-start-test.cpp.
#pragma once

#include <string>

namespace VX::Dialog::detail {

/// True when the file system has an entry at `path`. Throws boost::filesystem::filesystem_error
/// when it can't tell.
bool path_exists(const std::string& path);

}  // namespace VX::Dialog::detail
