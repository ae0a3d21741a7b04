// Reads a matrix of NumPy's file format (.npy), row by row: what numpy.save writes.
//
// Used by teacher.cpp. Never holds more than a row. Tested by tools/train/tests/teacher-test.cpp.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <span>
#include <vector>

namespace velmora::trainer {

/// A matrix of 8-bit integers or of floats (4 bytes), little-endian, in C order.
class VectorFile {
 public:
  /// Opens the file and reads its header. Throws Failure for any other file.
  explicit VectorFile(std::filesystem::path path);

  std::size_t rows() const { return rows_; }
  std::size_t columns() const { return columns_; }

  /// Reads the next row; its size is columns(). Throws Failure when the file ends before, and for
  /// a number that is not finite.
  void read_row(std::span<float> row);

 private:
  void read_header();
  void read_shape(const std::string& header);
  void read_bytes(char* bytes, std::size_t size);
  [[noreturn]] void fail(const std::string& why) const;

  std::filesystem::path path_;
  std::ifstream file_;
  bool holds_floats_ = false;
  std::size_t rows_ = 0;
  std::size_t columns_ = 0;
  std::vector<signed char> integers_;
};

}  // namespace velmora::trainer
