#include "vector-file.hpp"

#include <cmath>
#include <cstdint>
#include <regex>
#include <string>
#include <utility>

#include "failure.hpp"

namespace velmora::trainer {

namespace {

constexpr char kMagic[] = "\x93NUMPY";
constexpr std::size_t kMagicSize = 6;
constexpr std::size_t kLargestHeader = 65536;

// A little-endian number of so many bytes.
std::size_t number_in(const unsigned char* bytes, std::size_t size) {
  std::size_t number = 0;
  for (std::size_t k = size; k-- != 0;) {
    number = number << 8U | bytes[k];
  }
  return number;
}

}  // namespace

VectorFile::VectorFile(std::filesystem::path path)
    : path_(std::move(path)), file_(path_, std::ios::binary) {
  if (!file_) {
    fail("cannot be opened");
  }
  read_header();
  integers_.resize(holds_floats_ ? 0 : columns_);
}

// The header is six bytes of magic, two of the version, the size of the text that follows (two
// bytes in version 1, four in later ones), and that text, a Python dictionary.
void VectorFile::read_header() {
  char start[kMagicSize + 2];
  read_bytes(start, sizeof(start));
  if (std::string(start, kMagicSize) != kMagic) {
    fail("is not a file of numpy.save");
  }
  const std::size_t size_bytes = start[kMagicSize] == 1 ? 2 : 4;
  unsigned char size[4];
  read_bytes(reinterpret_cast<char*>(size), size_bytes);
  std::string header(std::min(number_in(size, size_bytes), kLargestHeader), ' ');
  read_bytes(header.data(), header.size());
  read_shape(header);
}

void VectorFile::read_shape(const std::string& header) {
  std::smatch found;
  const bool is_float = header.find("'<f4'") != std::string::npos;
  const bool is_integer = header.find("'|i1'") != std::string::npos;
  if (is_float == is_integer || header.find("'fortran_order': False") == std::string::npos) {
    fail("does not hold int8 or float32 in C order");
  }
  if (!std::regex_search(header, found, std::regex(R"('shape': \((\d{1,12}), (\d{1,6})\))"))) {
    fail("does not hold a matrix");
  }
  holds_floats_ = is_float;
  rows_ = std::stoul(found[1]);
  columns_ = std::stoul(found[2]);
}

void VectorFile::read_row(std::span<float> row) {
  if (holds_floats_) {
    read_bytes(reinterpret_cast<char*>(row.data()), row.size_bytes());
  } else {
    read_bytes(reinterpret_cast<char*>(integers_.data()), integers_.size());
    for (std::size_t k = 0; k != row.size(); ++k) {
      row[k] = integers_[k];
    }
  }
  for (const float number : row) {
    if (!std::isfinite(number)) {
      fail("holds a number that is not finite");
    }
  }
}

void VectorFile::read_bytes(char* bytes, std::size_t size) {
  if (!file_.read(bytes, static_cast<std::streamsize>(size))) {
    fail("ends too early");
  }
}

void VectorFile::fail(const std::string& why) const {
  throw Failure(path_.string() + ": " + why);
}

}  // namespace velmora::trainer
