// Environment: QRN_HISTORY_CALLS, how many calls are judged (10000); QRN_SEED, to choose
// everything but time as another run did.
//
// Two to four processes read and write a few records at random, one of them now and then dies, and
// what they have seen must be what the same calls, one after the other, could have shown. Windows
// of history are judged one by one: between them nobody is at work, and all records are read.
#include <gtest/gtest.h>
#include <unistd.h>

#include <random>

#include "clients/LineProcess.h"
#include "kit/History.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

constexpr Value kValuesEach = 100000;

struct HistoryTest : testing::Test {
  void SetUp() override { ASSERT_TRUE(MakeRegisters(process_, paths_)); }

  void Staff(size_t wanted);
  void Window();
  Testimony Listen(LineProcess& worker);
  HistoryStep LookAtAll();
  uint32_t Pick(uint32_t count) { return static_cast<uint32_t>(random_()) % count; }

  uint32_t seed_ = qrn::test::Seed();
  std::mt19937 random_{seed_};
  Folder folder_;
  std::vector<std::string> paths_ = {folder_.Path("a.dat"), folder_.Path("b.dat")};
  ThisProcess process_;
  std::vector<std::unique_ptr<LineProcess>> workers_;
  std::vector<Value> registers_ = std::vector<Value>(kRegisters, 0);
  Value nextValue_ = 1;
  uint32_t calls_ = 0;
  uint32_t deaths_ = 0;
};

void HistoryTest::Staff(size_t wanted) {
  while (workers_.size() < wanted) {
    const std::vector<std::string> arguments = {"history", std::to_string(nextValue_), paths_[0],
                                                paths_[1]};
    workers_.push_back(std::make_unique<LineProcess>(arguments, std::vector<std::string>()));
    nextValue_ += kValuesEach;
    EXPECT_EQ(workers_.back()->Hear(), "d");
  }
}

Testimony HistoryTest::Listen(LineProcess& worker) {
  Testimony testimony;
  while (const auto line = worker.Hear()) {
    if (*line == "d") return testimony;
    if (testimony.Hear(*line)) continue;
    ADD_FAILURE() << "QRN_SEED=" << seed_ << ": " << *line;
    worker.Kill();
  }
  testimony.HearDeath();
  return testimony;
}

// A step behind all others.
HistoryStep HistoryTest::LookAtAll() {
  HistoryStep step;
  step.called = Now();
  for (uint32_t reg = 0; reg < kRegisters; ++reg) {
    const Status status = Perform(process_, {ToldCall::Get, reg}, false, registers_[reg]);
    EXPECT_TRUE(status == kOk || status == kKeyNotFound) << status;
    step.actions.push_back({Action::Is, reg, registers_[reg]});
  }
  step.answered = Now();
  return step;
}

void HistoryTest::Window() {
  const std::vector<Value> before = registers_;
  const bool oneDies = Pick(2) == 0;
  for (const auto& worker : workers_) worker->Say("go " + std::to_string(random_()) + " 15");
  if (oneDies) {
    usleep(Pick(20000));
    workers_.back()->Kill();
    ++deaths_;
  }
  History history;
  for (const auto& worker : workers_) {
    const Testimony testimony = Listen(*worker);
    history.Add(testimony);
    calls_ += testimony.Calls();
  }
  if (oneDies) workers_.pop_back();
  history.Add(LookAtAll());
  const std::string faults = history.Faults(before);
  if (!faults.empty())
    ADD_FAILURE() << "QRN_SEED=" << seed_ << ", call " << calls_ << "\n" << faults;
}

TEST_F(HistoryTest, OfProcessesIsLinearizable) {
  const uint32_t wanted = qrn::test::Setting("QRN_HISTORY_CALLS", 10000);
  std::printf("seed %u\n", seed_);
  const int64_t start = Now();
  while (calls_ < wanted && !HasFailure()) {
    Staff(2 + calls_ * 3 / wanted);
    Window();
  }
  std::printf("%u calls, %u deaths, %.1f s\n", calls_, deaths_,
              static_cast<double>(Now() - start) / 1e9);
}

}  // namespace
}  // namespace btrieve::test
