// A directory of its own for a test, and short ways to fill and read the files in it.
#pragma once

#include <filesystem>

#include "../../../tests/kit/fixtures.hpp"

namespace velmora::trainer {

class TemporaryDirectory : public test::TemporaryFolder {
 public:
  std::filesystem::path operator/(const std::string& name) const { return string() + "/" + name; }
  std::string string() const { return path(); }
};

inline std::string content_of(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace velmora::trainer
