// Checkpoints: what is written comes back, and nothing damaged does.
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
  write_checkpoint(written, directory.path("whole"));
  const Checkpoint read = read_checkpoint(directory.path("whole"));
  EXPECT_EQ(read.fingerprint, written.fingerprint);
  EXPECT_EQ(read.sweeps, written.sweeps);
  EXPECT_EQ(read.word_factors, written.word_factors);

  const std::string whole = directory.read("whole");
  for (std::size_t place = 0; place != whole.size(); ++place) {
    EXPECT_THROW(read_checkpoint(directory.write("cut", whole.substr(0, place))), Failure) << place;
    std::string bent = whole;
    bent[place] = static_cast<char>(bent[place] ^ 1);
    EXPECT_THROW(read_checkpoint(directory.write("bent", bent)), Failure) << place;
  }
  EXPECT_THROW(read_checkpoint(directory.path("absent")), Failure);
}

}  // namespace
}  // namespace velmora::trainer
