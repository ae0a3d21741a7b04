#include "checkpoint.hpp"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "failure.hpp"
#include "fingerprint.hpp"
#include "output-file.hpp"

namespace velmora::trainer {

namespace fs = std::filesystem;

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

// What stands at the start of every checkpoint; what is shorter begins alike.
bool begins_as_checkpoint(const fs::path& path) {
  std::array<char, kMagic.size()> start = {};
  std::ifstream in(path, std::ios::binary);
  in.read(start.data(), start.size());
  const auto size = static_cast<std::size_t>(in.gcount());
  return std::string_view(start.data(), size) == kMagic.substr(0, size);
}

// Opens the file, or creates it; not open when another run has created it in between. Throws
// Failure.
Descriptor open_or_create(const fs::path& path, bool& created) {
  Descriptor opened = open_file(path);
  if (!opened.is_open() && errno == ENOENT) {
    opened = Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    created = opened.is_open();
  }
  if (!opened.is_open() && errno != EEXIST) {
    throw Failure("cannot open checkpoint " + path.string() + ": " + std::strerror(errno));
  }
  return opened;
}

}  // namespace

CheckpointFile::CheckpointFile(const fs::path& path)
    : path_(fs::weakly_canonical(fs::absolute(path))) {
  hold();
  if (!fs::is_regular_file(path_) || !begins_as_checkpoint(path_)) {
    throw Failure(path_.string() + " is not a checkpoint");
  }
  remove_leftovers();
  const ReplacedFile probe(path_);  // that can't be written is better known before the first sweep
}

CheckpointFile::~CheckpointFile() {
  std::error_code ignored;  // an empty file that stays does no harm
  if (created_ && held_.is_at(path_)) {
    fs::remove(path_, ignored);
  }
}

void CheckpointFile::hold() {
  // A second look, for a run that has just published a checkpoint or given up on one.
  for (int attempt = 0; attempt != 10; ++attempt) {
    created_ = false;
    held_ = open_or_create(path_, created_);
    if (held_.is_open() && !held_.lock() && errno == EWOULDBLOCK) {
      created_ = false;
      break;
    }
    if (held_.is_open() && held_.is_at(path_)) {
      return;
    }
  }
  throw Failure("checkpoint " + path_.string() + " is in use by another training");
}

void CheckpointFile::remove_leftovers() const {
  std::error_code ignored;  // what can't be looked at or removed stays
  for (const fs::directory_entry& entry : fs::directory_iterator(path_.parent_path(), ignored)) {
    if (is_temporary_name(entry.path(), path_, "partial") &&
        fs::is_regular_file(entry.symlink_status(ignored)) && begins_as_checkpoint(entry.path())) {
      fs::remove(entry.path(), ignored);
    }
  }
}

std::optional<Checkpoint> CheckpointFile::read() const {
  std::ifstream in(path_, std::ios::binary);
  const std::string content((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) {
    throw Failure("cannot read checkpoint " + path_.string());
  }
  if (content.empty()) {
    return std::nullopt;
  }
  Header header = {};
  std::uint64_t sum = 0;
  bool whole = content.size() >= sizeof header + sizeof sum;
  std::string_view factors;
  if (whole) {
    std::memcpy(&header, content.data(), sizeof header);
    factors = std::string_view(content).substr(sizeof header,
                                               content.size() - sizeof header - sizeof sum);
    std::memcpy(&sum, factors.data() + factors.size(), sizeof sum);
    whole = sum == checksum(bytes_of(header), factors) &&
            factors.size() == header.dim * header.words * sizeof(float);
  }
  if (!whole) {
    throw Failure("checkpoint " + path_.string() + " is damaged");
  }
  Checkpoint checkpoint;
  checkpoint.fingerprint = header.fingerprint;
  checkpoint.sweeps = header.sweeps;
  checkpoint.word_factors.resize(static_cast<Eigen::Index>(header.dim),
                                 static_cast<Eigen::Index>(header.words));
  std::memcpy(checkpoint.word_factors.data(), factors.data(), factors.size());
  return checkpoint;
}

void CheckpointFile::write(const Checkpoint& checkpoint) {
  Header header = {{},
                   checkpoint.fingerprint,
                   checkpoint.sweeps,
                   static_cast<std::uint64_t>(checkpoint.word_factors.rows()),
                   static_cast<std::uint64_t>(checkpoint.word_factors.cols())};
  std::copy(kMagic.begin(), kMagic.end(), header.magic.begin());
  const std::uint64_t sum = checksum(bytes_of(header), bytes_of(checkpoint.word_factors));
  ReplacedFile file(path_);
  Descriptor next = open_file(file.written_path());
  // Locked before it gets its name, so that at no moment another run could take it.
  (void)next.lock();
  file.write(bytes_of(header));
  file.write(bytes_of(checkpoint.word_factors));
  file.write({reinterpret_cast<const char*>(&sum), sizeof sum});
  file.publish();
  held_ = std::move(next);
  created_ = false;
}

}  // namespace velmora::trainer
