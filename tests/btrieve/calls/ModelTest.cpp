// The record manager against the model, for a few seconds from QRN_SEED on.
#include <gtest/gtest.h>

#include <chrono>

#include "kit/ModelRun.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

TEST(Model, AnswersEveryCallAlike) {
  const auto start = std::chrono::steady_clock::now();
  const std::chrono::duration<double> whole(qrn::test::Setting("QRN_MODEL_SECONDS", 6));
  uint32_t seed = qrn::test::Seed();
  int files = 0;
  for (; std::chrono::steady_clock::now() - start < whole && !HasFailure(); ++files, ++seed) {
    Choices choices(seed);
    ASSERT_EQ(RunModel(choices, 500), "") << "QRN_SEED=" << seed;
  }
  std::printf("%d files of 500 calls\n", files);
  EXPECT_GT(files, 0);
}

// Make-ups that a random one seldom has, each with a few seeds of its own.
TEST(Model, FixedSeedsStayGood) {
  for (uint32_t seed = 1; seed <= 12; ++seed) {
    Choices choices(seed);
    ASSERT_EQ(RunModel(choices, 300), "") << "seed " << seed;
  }
}

}  // namespace
}  // namespace btrieve::test
