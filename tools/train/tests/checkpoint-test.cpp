// Checkpoints: what is written comes back, nothing damaged does, and nobody else's file is touched.
#include "checkpoint.hpp"

#include <gtest/gtest.h>

#include "failure.hpp"
#include "kit/fixtures.hpp"

namespace velmora::trainer {
namespace {

TEST(Checkpoint, ComesBackAndNoDamageGoesUnseen) {
  const test::TemporaryFolder directory;
  Checkpoint written;
  written.fingerprint = 0x0123456789abcdefU;
  written.sweeps = 2;
  written.word_factors = Eigen::MatrixXf::Random(3, 5);
  CheckpointFile(directory.path("whole")).write(written);
  const Checkpoint read = CheckpointFile(directory.path("whole")).read().value();
  EXPECT_EQ(read.fingerprint, written.fingerprint);
  EXPECT_EQ(read.sweeps, written.sweeps);
  EXPECT_EQ(read.word_factors, written.word_factors);

  const std::string whole = directory.read("whole");
  const auto read_file = [&](const std::string& content) {
    return CheckpointFile(directory.write("other", content)).read();
  };
  EXPECT_FALSE(read_file("").has_value());  // no sweep was saved
  for (std::size_t place = 0; place != whole.size(); ++place) {
    if (place != 0) {
      EXPECT_THROW(read_file(whole.substr(0, place)), Failure) << place;
    }
    std::string bent = whole;
    bent[place] = static_cast<char>(bent[place] ^ 1);
    EXPECT_THROW(read_file(bent), Failure) << place;
  }
}

TEST(Checkpoint, BelongsToOneRunAtATime) {
  const test::TemporaryFolder directory;
  const std::string path = directory.path("point");
  Checkpoint state;
  state.word_factors = Eigen::MatrixXf::Random(2, 2);
  {
    CheckpointFile file(path);
    EXPECT_THROW(CheckpointFile second(path), Failure);  // before the first sweep
  }
  EXPECT_FALSE(std::filesystem::exists(path));  // nothing was saved
  {
    CheckpointFile file(path);
    file.write(state);
    EXPECT_THROW(CheckpointFile second(path), Failure);
    file.write(state);
    EXPECT_THROW(CheckpointFile second(path), Failure);
  }
  EXPECT_TRUE(CheckpointFile(path).read().has_value());
}

TEST(Checkpoint, TouchesNothingOfAnyoneElse) {
  const test::TemporaryFolder directory;
  EXPECT_THROW(CheckpointFile file(directory.write("corpus", "go up\n")), Failure);
  EXPECT_EQ(directory.read("corpus"), "go up\n");

  // Names that a guess of the temporary name could hit, or that look like it.
  directory.write("victim", "mine");
  std::filesystem::create_symlink(directory.path("victim"), directory.path("point.partial"));
  directory.write("point.partial-backup", "mine");
  directory.write("point.partial-AbCdEf", "VLMTRAIN and then the machine stopped");
  CheckpointFile file(directory.path("point"));
  file.write({});
  EXPECT_EQ(directory.read("victim"), "mine");
  EXPECT_EQ(directory.read("point.partial-backup"), "mine");
  EXPECT_FALSE(std::filesystem::exists(directory.path("point.partial-AbCdEf")));
}

}  // namespace
}  // namespace velmora::trainer
