#include "checkpoint.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "failure.hpp"
#include "fingerprint.hpp"
#include "output-file.hpp"

namespace velmora::trainer {

namespace {

constexpr std::string_view kMagic = "VLMTRAIN";

struct Header {
  std::array<char, 8> magic;
  std::uint64_t fingerprint;
  std::uint64_t sweeps;
  std::uint64_t dim;
  std::uint64_t words;
};

std::string_view bytes_of(const Header& header) {
  return {reinterpret_cast<const char*>(&header), sizeof header};
}

std::string_view bytes_of(const Eigen::MatrixXf& factors) {
  return {reinterpret_cast<const char*>(factors.data()),
          static_cast<std::size_t>(factors.size()) * sizeof(float)};
}

std::uint64_t checksum(std::string_view header, std::string_view factors) {
  Fingerprint sum;
  sum.add(header.data(), header.size());
  sum.add(factors.data(), factors.size());
  return sum.value();
}

}  // namespace

void write_checkpoint(const Checkpoint& checkpoint, const std::filesystem::path& path) {
  Header header = {{},
                   checkpoint.fingerprint,
                   checkpoint.sweeps,
                   static_cast<std::uint64_t>(checkpoint.word_factors.rows()),
                   static_cast<std::uint64_t>(checkpoint.word_factors.cols())};
  std::copy(kMagic.begin(), kMagic.end(), header.magic.begin());
  const std::uint64_t sum = checksum(bytes_of(header), bytes_of(checkpoint.word_factors));
  ReplacedFile file(path);
  file.write(bytes_of(header));
  file.write(bytes_of(checkpoint.word_factors));
  file.write({reinterpret_cast<const char*>(&sum), sizeof sum});
  file.publish();
}

Checkpoint read_checkpoint(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    throw Failure("cannot read checkpoint " + path.string());
  }
  const std::string content((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  Header header = {};
  std::uint64_t sum = 0;
  const bool has_header =
      content.size() >= sizeof header + sizeof sum && std::string_view(content).starts_with(kMagic);
  if (!has_header) {
    throw Failure(path.string() + " is no checkpoint");
  }
  std::memcpy(&header, content.data(), sizeof header);
  const std::string_view factors =
      std::string_view(content).substr(sizeof header, content.size() - sizeof header - sizeof sum);
  std::memcpy(&sum, factors.data() + factors.size(), sizeof sum);
  const bool whole = sum == checksum(bytes_of(header), factors);
  if (!whole || factors.size() != header.dim * header.words * sizeof(float)) {
    throw Failure("checkpoint " + path.string() + " is damaged");
  }
  Checkpoint checkpoint;
  checkpoint.fingerprint = header.fingerprint;
  checkpoint.sweeps = header.sweeps;
  checkpoint.word_factors.resize(static_cast<Eigen::Index>(header.dim),
                                 static_cast<Eigen::Index>(header.words));
  std::memcpy(checkpoint.word_factors.data(), factors.data(), factors.size());
  return checkpoint;
}

}  // namespace velmora::trainer
