// A directory of its own for a test, and short ways to fill and read the files in it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace velmora::trainer {

class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string path = testing::TempDir() + "velmora-train-XXXXXX";
    EXPECT_NE(mkdtemp(path.data()), nullptr);
    path_ = path;
  }
  ~TemporaryDirectory() { std::filesystem::remove_all(path_); }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  std::string string() const { return path_.string(); }

  std::filesystem::path write(const std::string& name, const std::string& text) const {
    std::ofstream(path_ / name, std::ios::binary) << text;
    return path_ / name;
  }

 private:
  std::filesystem::path path_;
};

inline std::string content_of(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace velmora::trainer
