// Environment: QRN_KILL_ROUNDS, how many processes are killed at random moments (40).
//
// Processes killed while they write: what was acknowledged stands in both files, whole, and at
// most the one step in flight beside it.
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <random>

#include "clients/FaultsOf.h"
#include "clients/Remote.h"
#include "kit/Plan.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

struct KillTest : testing::Test {
  void SetUp() override { ASSERT_TRUE(BeginPlan(paths_, seed_, next_, state_)); }

  std::vector<std::string> Arguments(uint32_t steps, uint32_t killAt) const {
    return {"plan",
            std::to_string(seed_),
            std::to_string(next_),
            std::to_string(steps),
            std::to_string(killAt),
            paths_[0],
            paths_[1]};
  }

  // Takes the acknowledgements into the state, then compares with the files: they hold that, or
  // one step more. `allowMore` is false when the worker ended by itself.
  void Check(const std::string& acknowledged, bool allowMore) {
    ASSERT_EQ(acknowledged.find('E'), std::string::npos) << "a status was not 0: " << acknowledged;
    for (const char letter : acknowledged) {
      if (letter == '.') Advance();
    }
    ThisProcess process;
    ASSERT_TRUE(OpenPlanFiles(process, paths_));
    PlanState found;
    ASSERT_EQ(ReadPlanFiles(process, found), "");
    for (const std::string& path : paths_) ASSERT_EQ(FaultsOf(path), "");
    if (found == state_) return;
    ASSERT_TRUE(allowMore) << "lost or changed without being killed";
    Advance();
    ++inFlight_;
    ASSERT_EQ(found, state_) << "neither what was acknowledged nor one step more";
  }

  void Advance() { ApplyStep(PlanOf(seed_, next_++, state_), state_); }

  uint32_t seed_ = qrn::test::Seed();
  uint32_t next_ = 20;
  PlanState state_;
  int inFlight_ = 0;
  Folder folder_;
  std::vector<std::string> paths_ = {folder_.Path("a.dat"), folder_.Path("b.dat")};
};

// What the worker says until it falls silent for good.
std::string ReadRest(int descriptor) {
  std::string text;
  char buffer[256];
  for (ssize_t got; (got = read(descriptor, buffer, sizeof buffer)) > 0;) text.append(buffer, got);
  return text;
}

void WaitForOutput(int descriptor, int milliseconds) {
  pollfd ready{descriptor, POLLIN, 0};
  poll(&ready, 1, milliseconds);
}

TEST_F(KillTest, AtAnyMoment) {
  SCOPED_TRACE("QRN_SEED=" + std::to_string(seed_));
  std::mt19937 random(seed_);
  const uint32_t before = next_;
  const uint32_t rounds = qrn::test::Setting("QRN_KILL_ROUNDS", 40);
  for (uint32_t round = 0; round < rounds && !HasFatalFailure(); ++round) {
    OtherProcess worker(Arguments(0, 0));
    if (round % 8 != 0) WaitForOutput(worker.Output(), 5000);
    usleep(random() % 30000);
    worker.Kill();
    Check(ReadRest(worker.Output()), true);
  }
  std::printf("%u kills, %u steps, %d in flight were kept\n", rounds, next_ - before, inFlight_);
  EXPECT_GT(next_, before);
}

// One step at a time, dying at its first write, at its second, and so on until it survives.
TEST_F(KillTest, AtEveryWriteOfAStep) {
  SCOPED_TRACE("QRN_SEED=" + std::to_string(seed_));
  uint32_t writes = 0;
  for (int steps = 0; steps < 4 && !HasFatalFailure(); ++steps) {
    for (uint32_t killAt = 1; !HasFatalFailure(); ++killAt, ++writes) {
      OtherProcess worker(Arguments(1, killAt));
      const std::string said = ReadRest(worker.Output());
      Check(said, said != ".!");
      if (said == ".!") break;
    }
  }
  std::printf("%u writes died at\n", writes);
  EXPECT_GT(writes, 4u);
}

}  // namespace
}  // namespace btrieve::test
