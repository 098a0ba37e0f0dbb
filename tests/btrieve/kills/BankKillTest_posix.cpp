// Environment: QRN_KILL_ROUNDS, how many processes die (200); QRN_SEED, to choose everything but
// time as another run did; QRN_KILL_WORKER, a program with its arguments, separated by "|",
// which every other new process runs.
//
// Two to four processes and this one work on the same four files, and one after the other is
// killed while the others go on: at a random moment, or at the n-th moment of a step, n = 1, 2, ...
// After each death every living process must see what was acknowledged, and of what was under way
// each step wholly or not at all; so must the first one to come after all have gone.
#include <unistd.h>

#include <chrono>
#include <random>

#include "clients/Branch.h"
#include "clients/FaultsOf.h"
#include "kit/BankSteps.h"
#include "tests/support/Setting.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

constexpr int32_t kIdsEach = 100000;  // records that one process may make

std::vector<std::string> OtherProgram() {
  const char* text = getenv("QRN_KILL_WORKER");
  std::istringstream words(text ? text : "");
  std::vector<std::string> program;
  for (std::string word; std::getline(words, word, '|');) program.push_back(word);
  return program;
}

// Files are changed thousands of times here, and nothing is tested about the disk.
std::filesystem::path QuickPlace() {
  return access("/dev/shm", W_OK) == 0 ? "/dev/shm" : std::filesystem::temp_directory_path();
}

// Dying at the n-th moment of a kind of step, until a step survives all of them.
struct Sweep {
  static constexpr uint32_t kKinds = 8;  // those that change anything
  static constexpr uint32_t kAll = 1;    // moments, as the worker takes them
  static constexpr uint32_t kFromEnd = 2;

  uint32_t kind = 0;
  uint32_t moments = 0;
  uint32_t next = 1;

  void Advance(bool survived, uint32_t stride) {
    next += stride;
    if (!survived) return;
    next = 1;
    moments = kFromEnd - moments;
    if (moments == 0) kind = (kind + 1) % kKinds;
  }
};

struct BankKillTest : testing::Test {
  void SetUp() override {
    ASSERT_TRUE(MakeBank(process_, paths_));
    BankState state;
    BankPositions positions;
    ASSERT_EQ(ReadBankEveryWay(process_, state, positions), "");
    books_.emplace(state);
  }
  void TearDown() override {
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start_;
    std::printf(
        "seed %u: %u kills, %.1f a second, %u steps, %u refused, %u kept unacknowledged, "
        "%u never begun\n",
        seed_, kills_, kills_ / time.count(), steps_, refused_, books_->KeptOpen(), neverBegun_);
  }

  void Staff();
  void RoundOfChance();
  void RoundOfSweep();
  void RoundOfLeaving();
  void DieSettling();
  void AllGo();

  uint32_t SomeVictim() { return 1 + Pick(static_cast<uint32_t>(branches_.size()) - 1); }
  void LetOthersWork(size_t victim);
  Heard HearOne(Branch& branch);
  void HearOthers(size_t victim);
  void Bury(size_t victim);
  void Remove(size_t victim) {
    branches_.erase(branches_.begin() + static_cast<std::ptrdiff_t>(victim));
  }

  void Look();
  void AwaitRelease();
  void LookHere();
  void LookAt(Branch& branch);
  void Expect(const std::string& faults, const std::string& who);
  void ExpectAlive(const Heard& heard, const std::string& who) {
    Expect(heard.died ? "it has ended of itself: " + heard.ending + "\n" : "", who);
  }
  uint32_t Pick(uint32_t count) { return static_cast<uint32_t>(random_()) % count; }

  uint32_t seed_ = qrn::test::Seed();
  uint32_t rounds_ = qrn::test::Setting("QRN_KILL_ROUNDS", 200);
  // Deaths between two times when nobody is left.
  const uint32_t epoch_ = rounds_ < 1000 ? 100 : 500;
  std::mt19937 random_{seed_};
  Folder folder_{QuickPlace()};
  std::vector<std::string> paths_ = {folder_.Path("north.dat"), folder_.Path("south.dat"),
                                     folder_.Path("ledger.dat"), folder_.Path("numbers.dat")};
  const std::vector<std::string> otherProgram_ = OtherProgram();
  ThisProcess process_;
  std::optional<BankBooks> books_;
  std::vector<std::unique_ptr<Branch>> branches_;
  Sweep sweep_;
  std::string round_;
  int32_t nextId_ = 1000;
  uint32_t kills_ = 0;
  uint32_t steps_ = 0;
  uint32_t refused_ = 0;
  uint32_t neverBegun_ = 0;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

void BankKillTest::Expect(const std::string& faults, const std::string& who) {
  if (faults.empty() || HasFailure()) return;
  ADD_FAILURE() << "QRN_SEED=" << seed_ << " QRN_KILL_ROUNDS=" << rounds_ << ", kill " << kills_
                << " (" << round_ << "), as seen by " << who << ":\n"
                << faults;
}

// Fills up to two, three or four processes; the first one lives for as long as the epoch.
void BankKillTest::Staff() {
  const size_t wanted = 2 + kills_ * 5 / epoch_ % 3;
  while (branches_.size() < wanted) {
    const bool other = !otherProgram_.empty() && Pick(2) == 0;
    branches_.push_back(std::make_unique<Branch>(
        nextId_, paths_, other ? otherProgram_ : std::vector<std::string>()));
    nextId_ += kIdsEach;
    const Heard heard = HearOne(*branches_.back());
    if (other && heard.died && !heard.begun && neverBegun_ < 1 + kills_ / 500) {
      ++neverBegun_;  // the other system could not start a program beside all that dies there
      branches_.pop_back();
    } else {
      ExpectAlive(heard, "a new branch");
    }
  }
}

Heard BankKillTest::HearOne(Branch& branch) {
  Heard heard = branch.Hear();
  Expect(heard.fault, "a branch");
  books_->Acknowledged(heard.acknowledged);
  if (!heard.open.empty()) books_->LeftOpen(heard.open);
  for (const Heard::Place& place : heard.places) {
    Expect(books_->Placed(place.file, place.position, place.id), "a branch");
  }
  steps_ += heard.steps;
  refused_ += heard.refused;
  return heard;
}

void BankKillTest::LetOthersWork(size_t victim) {
  for (size_t i = 0; i < branches_.size(); ++i) {
    if (i == victim) continue;
    if (Pick(30) == 0) {
      branches_[i]->Reopen();
    } else {
      branches_[i]->Go({.seed = Pick(UINT32_MAX), .steps = Pick(3) * Pick(8)});
    }
  }
}

void BankKillTest::HearOthers(size_t victim) {
  for (size_t i = 0; i < branches_.size(); ++i) {
    if (i == victim) continue;
    ExpectAlive(HearOne(*branches_[i]), "a survivor");
  }
}

void BankKillTest::Bury(size_t victim) {
  branches_[victim]->Kill();
  HearOne(*branches_[victim]);
  Remove(victim);
  ++kills_;
}

void BankKillTest::RoundOfChance() {
  round_ = "by chance";
  const size_t victim = SomeVictim();
  LetOthersWork(victim);
  branches_[victim]->Go({.seed = Pick(UINT32_MAX), .steps = 1000000});
  usleep(Pick(20000));
  branches_[victim]->Kill();
  HearOthers(victim);
  Bury(victim);
}

// One step; at its n-th moment its process dies. Now and then the next one dies while it settles
// what the first has left.
void BankKillTest::RoundOfSweep() {
  const Batch batch{Pick(UINT32_MAX), 1, sweep_.kind, sweep_.next, sweep_.moments};
  round_ = std::string(BankStepName(batch.kind)) + ", moment " + std::to_string(batch.killAt) +
           (batch.moments != 0 ? " from End on" : "");
  const bool another = branches_.size() > 2 && Pick(3) == 0;
  const size_t victim = SomeVictim();
  if (!another) LetOthersWork(victim);
  branches_[victim]->Go(batch);
  const Heard heard = HearOne(*branches_[victim]);
  if (!another) HearOthers(victim);
  if (heard.died) Bury(victim);
  if (heard.died || heard.steps != 0) sweep_.Advance(!heard.died, rounds_ < 1000 ? 1 + Pick(8) : 1);
  if (another) DieSettling();
}

void BankKillTest::DieSettling() {
  const Batch batch{Pick(UINT32_MAX), 1, kAnyStep, 1 + Pick(40), Sweep::kAll};
  round_ += ", then moment " + std::to_string(batch.killAt) + " of its settler";
  const size_t victim = SomeVictim();
  branches_[victim]->Go(batch);
  if (HearOne(*branches_[victim]).died) Bury(victim);
}

void BankKillTest::RoundOfLeaving() {
  round_ = "leaving";
  const size_t victim = SomeVictim();
  LetOthersWork(victim);
  branches_[victim]->Go({.seed = Pick(UINT32_MAX), .steps = 3});
  branches_[victim]->Leave();
  HearOthers(victim);
  while (!HearOne(*branches_[victim]).died) {
  }
  Remove(victim);
}

void BankKillTest::LookHere() {
  BankState state;
  BankPositions positions;
  Expect(ReadBankEveryWay(process_, state, positions), "the test");
  Expect(books_->Judge(state), "the test");
  Expect(books_->JudgePositions(positions), "the test");
}

void BankKillTest::LookAt(Branch& branch) {
  branch.View();
  const Heard heard = HearOne(branch);
  ExpectAlive(heard, "a survivor");
  Expect(books_->Judge(StateOf(heard.view)), "a survivor");
}

// Of a Windows process another one holds the locks, and lets go of them a little after its death;
// a server may still be at the commit that the dead have asked for.
void BankKillTest::AwaitRelease() {
  ASSERT_EQ(process_.Call(kBegin, 0, {}).status, 0);
  for (int file = 0; file < kBankFiles; ++file) {
    const Status status = process_.Call(kStepFirst, file, {.room = kBankRecordSize}).status;
    EXPECT_TRUE(status == kOk || status == kEndOfFile) << status;
  }
  ASSERT_EQ(process_.Call(kEnd, 0, {}).status, 0);
}

// Whoever looks first settles what the dead have left, so each comes to be the first.
void BankKillTest::Look() {
  if (Pick(20) == 0) {
    process_.Call(kReset, 0, {});
    ASSERT_TRUE(OpenBank(process_, paths_));
  }
  AwaitRelease();
  std::vector<Branch*> order = {nullptr};
  for (const auto& branch : branches_) order.push_back(branch.get());
  std::shuffle(order.begin(), order.end(), random_);
  for (Branch* branch : order) branch ? LookAt(*branch) : LookHere();
}

// All die; whoever comes then finds what they have said.
void BankKillTest::AllGo() {
  round_ = "all gone";
  for (const auto& branch : branches_) branch->Go({.seed = Pick(UINT32_MAX), .steps = 1000000});
  usleep(Pick(20000));
  process_.Call(kReset, 0, {});
  for (const auto& branch : branches_) branch->Kill();
  for (const auto& branch : branches_) HearOne(*branch);
  kills_ += static_cast<uint32_t>(branches_.size());
  branches_.clear();
  ASSERT_TRUE(OpenBank(process_, paths_));
  AwaitRelease();
  LookHere();
  process_.Call(kReset, 0, {});
  for (const std::string& path : paths_) Expect(FaultsOf(path), path);
  ASSERT_TRUE(OpenBank(process_, paths_));
}

TEST_F(BankKillTest, NothingIsLostOrHalfDone) {
  std::printf("seed %u\n", seed_);
  while (kills_ < rounds_ && !HasFailure()) {
    const uint32_t end = kills_ + epoch_;
    while (kills_ < end && !HasFailure()) {
      Staff();
      if (Pick(20) == 0) {
        RoundOfLeaving();
      } else {
        Pick(2) == 0 ? RoundOfChance() : RoundOfSweep();
      }
      Look();
    }
    if (!HasFailure()) AllGo();
  }
  EXPECT_GT(steps_, kills_);
}

}  // namespace
}  // namespace btrieve::test
