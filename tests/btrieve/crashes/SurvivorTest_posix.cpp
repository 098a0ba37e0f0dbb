// A process dies at each write of a transaction over two files while another one has both open.
// What the survivor then reads is whole, stays what it was after the survivor has died too, and
// what it writes at once takes nothing of the dead one's place.
#include <gtest/gtest.h>
#include <unistd.h>

#include "clients/Remote.h"
#include "kit/Plan.h"

namespace btrieve::test {
namespace {

// What the survivor does first.
enum class First { ReadsTheCoordinator, ReadsTheFollower, Inserts, InsertsInATransaction };

struct Case {
  int begin;
  First first;
};

struct SurvivorTest : testing::TestWithParam<Case> {
  void SetUp() override { ASSERT_TRUE(BeginPlan(paths_, seed_, number_, state_)); }

  // The next step of the plan that is a transaction of this kind and inserts into its second file.
  PlanStep FindStep() {
    while (true) {
      const PlanStep step = PlanOf(seed_, number_, state_);
      const auto& parts = step.operations;
      if (step.begin == GetParam().begin && parts.size() > 1 &&
          parts.front().file != parts.back().file && parts.back().operation == kInsert) {
        return step;
      }
      ++number_;
    }
  }

  // False when the worker has survived its step.
  bool RunWorker(uint32_t killAt) {
    OtherProcess worker({"plan", std::to_string(seed_), std::to_string(number_), "1",
                         std::to_string(killAt), paths_[0], paths_[1]});
    std::string said;
    char letter;
    while (read(worker.Output(), &letter, 1) == 1) said += letter;
    EXPECT_EQ(said.find('E'), std::string::npos) << said;
    return said != ".!";
  }

  void ActFirst(Client& survivor, const PlanStep& step) {
    const int coordinator = step.operations.front().file;
    const First first = GetParam().first;
    if (first == First::ReadsTheCoordinator || first == First::ReadsTheFollower) {
      const int file = first == First::ReadsTheCoordinator ? coordinator : 1 - coordinator;
      EXPECT_EQ(survivor.Call(kStepFirst, file, {.room = 24}).status, 0);
      return;
    }
    const bool within = first == First::InsertsInATransaction;
    const int32_t id = kBeyondPlan + ownRecords_++;
    const CallIn record{.data = Number(id) + Number(int32_t{1}) + Padded("text 1", 16),
                        .keyNumber = -1};
    if (within) {
      EXPECT_EQ(survivor.Call(kConcurrent + kBegin, 0, {}).status, 0);
    }
    EXPECT_EQ(survivor.Call(kInsert, 1 - coordinator, record).status, 0);
    if (within) {
      EXPECT_EQ(survivor.Call(kEnd, 0, {}).status, 0);
    }
    state_[static_cast<size_t>(1 - coordinator)][id] = 1;
  }

  uint32_t seed_ = 4711;
  uint32_t number_ = 20;
  int32_t ownRecords_ = 0;
  PlanState state_;
  Folder folder_;
  std::vector<std::string> paths_ = {folder_.Path("a.dat"), folder_.Path("b.dat")};
};

TEST_P(SurvivorTest, SeesAllOfATransactionOrNothing) {
  uint32_t kept = 0;
  uint32_t killAt = 0;
  for (bool died = true; died && !HasFailure();) {
    SCOPED_TRACE("dies at write " + std::to_string(++killAt));
    PlanState seen;
    const PlanStep step = FindStep();
    {
      OtherProcess survivor;
      ASSERT_TRUE(OpenPlanFiles(survivor, paths_));
      ASSERT_EQ(ReadPlanFiles(survivor, seen), "");
      died = RunWorker(killAt);
      ActFirst(survivor, step);
      ASSERT_EQ(ReadPlanFiles(survivor, seen), "");
    }
    ThisProcess later;
    PlanState found;
    ASSERT_TRUE(OpenPlanFiles(later, paths_));
    ASSERT_EQ(ReadPlanFiles(later, found), "");
    ASSERT_EQ(found, seen) << "what the survivor had read has changed";
    if (found != state_) {
      ApplyStep(step, state_);
      ++number_;
      ++kept;
    }
    ASSERT_EQ(found, state_) << "half a transaction, or a lost record";
  }
  EXPECT_GT(killAt, 4u);
  EXPECT_GT(kept, 0u);
}

INSTANTIATE_TEST_SUITE_P(Kinds, SurvivorTest,
                         testing::Values(Case{19, First::ReadsTheFollower},
                                         Case{19, First::InsertsInATransaction},
                                         Case{1019, First::ReadsTheCoordinator},
                                         Case{1019, First::Inserts}));

}  // namespace
}  // namespace btrieve::test
