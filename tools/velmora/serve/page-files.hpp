// The files of the page, embedded in the program by embed-files.cmake.
// Tested by tools/velmora/tests/serve_transport_test.py.
#pragma once

#include <string>
#include <string_view>

namespace serve {

struct PageFile {
  std::string_view path;  ///< as a browser asks for it: "/app.js"
  const char* content_type;
  std::string_view content;
};

/// The file at a path ("/" is the page itself), or null.
const PageFile* find_page_file(std::string_view path);

}  // namespace serve
