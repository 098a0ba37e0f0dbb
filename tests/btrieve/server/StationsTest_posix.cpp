// Environment: QRN_STATIONS_SECONDS, how long they work, not at all without it; QRN_SEED, to choose
// everything but time as another run did; QRN_KILL_WORKER, a program with its arguments, separated
// by "|", which every other station runs.
//
// Twelve stations move money between accounts on one server. They are killed, and the server ends
// and starts again, at any moment. What was acknowledged must stand in the books then, and of what
// was under way each step wholly or not at all.
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "clients/Branch.h"
#include "kit/BankSteps.h"
#include "kit/Choices.h"
#include "kit/ServerSchema.h"
#include "tests/support/Setting.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr size_t kStations = 12;
constexpr int32_t kIdsOfOne = 100000;  // records that one station may make

std::vector<std::string> ProgramOfOthers() {
  const char* text = std::getenv("QRN_KILL_WORKER");
  return Split(text ? text : "", '|');
}

class Stations : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(MakeBank(process_, paths_));
    BankState state;
    ASSERT_EQ(ReadBankEveryWay(process_, state, positions_), "");
    books_.emplace(state);
  }
  void TearDown() override {
    std::printf("seed %u: %u steps, %u refused, %u kills, %u restarts, %u times away, %u kept\n",
                seed_, steps_, refused_, kills_, restarts_, losses_, books_->KeptOpen());
  }

  void Hire() {
    const size_t before = stations_.size();
    while (stations_.size() < kStations) {
      const bool other = !programOfOthers_.empty() && hired_ % 2 == 0;
      const int32_t firstId = 1000 + kIdsOfOne * hired_++;
      stations_.push_back(std::make_unique<Branch>(
          firstId, paths_, other ? programOfOthers_ : std::vector<std::string>()));
    }
    for (size_t at = before; at < kStations; ++at) Hear(*stations_[at]);
  }
  // Everyone works; meanwhile what happens happens.
  void Work() {
    for (const auto& station : stations_) {
      station->Go({.seed = choices_.Pick(UINT32_MAX), .steps = 5 + choices_.Pick(40)});
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(choices_.Pick(400)));
    if (choices_.Chance(3)) RestartServer();
    for (uint32_t deaths = choices_.Pick(3); deaths > 0; --deaths) {
      stations_[choices_.Pick(kStations)]->Kill();
    }
  }
  void RestartServer() {
    const char* keeper = std::getenv("QRN_SERVER_KEEPER");
    ASSERT_NE(keeper, nullptr) << "to be run by scripts/server.sh";
    ASSERT_EQ(kill(std::atoi(keeper), SIGUSR1), 0);
    ++restarts_;
  }
  // Waits until everyone has done its work, or is dead.
  void HearAll() {
    std::erase_if(stations_, [this](const auto& station) {
      const bool died = Hear(*station);
      kills_ += died;
      return died;
    });
  }
  bool Hear(Branch& station) {
    const Heard heard = station.Hear();
    Expect(heard.fault);
    if (heard.died) Expect(heard.ending.find("was ended") == std::string::npos ? heard.ending : "");
    books_->Acknowledged(heard.acknowledged);
    if (!heard.open.empty()) books_->LeftOpen(heard.open);
    for (const auto& lost : heard.lost) books_->LeftOpen(lost);
    for (const Heard::Place& place : heard.places) {
      Expect(books_->Placed(place.file, place.position, place.id));
    }
    steps_ += heard.steps;
    refused_ += heard.refused;
    losses_ += heard.losses;
    return heard.died;
  }
  void Audit() {
    BankState state;
    std::string differs;
    const auto end = Clock::now() + std::chrono::seconds(30);
    do {
      process_.Call(kReset, 0, {});
      differs = OpenBank(process_, paths_) ? ReadBankEveryWay(process_, state, positions_)
                                           : "the bank does not open";
    } while (!differs.empty() && Clock::now() < end);
    Expect(differs);
    Expect(books_->Judge(state));
    Expect(books_->JudgePositions(positions_));
  }
  void Expect(const std::string& faults) {
    EXPECT_EQ(faults, "") << "QRN_SEED=" << seed_ << ", after " << kills_ << " kills, " << restarts_
                          << " restarts";
  }

  uint32_t seed_ = qrn::test::Seed();
  Choices choices_{seed_};
  qrn::test::TempFolder folder_;
  ServerSchema schema_{folder_.Text()};
  std::vector<std::string> paths_ = {folder_.Path("north.dat"), folder_.Path("south.dat"),
                                     folder_.Path("ledger.dat"), folder_.Path("numbers.dat")};
  const std::vector<std::string> programOfOthers_ = ProgramOfOthers();
  ThisProcess process_;
  BankPositions positions_;
  std::optional<BankBooks> books_;
  std::vector<std::unique_ptr<Branch>> stations_;
  int32_t hired_ = 0;
  uint32_t steps_ = 0, refused_ = 0, kills_ = 0, restarts_ = 0, losses_ = 0;
};

TEST_F(Stations, LoseNothingThatWasAcknowledged) {
  const std::chrono::seconds length(qrn::test::Setting("QRN_STATIONS_SECONDS", 0));
  if (length.count() == 0) GTEST_SKIP() << "QRN_STATIONS_SECONDS tells for how long";
  const auto end = Clock::now() + length;
  while (Clock::now() < end && !HasFailure()) {
    Hire();
    Work();
    HearAll();
    Audit();
  }
  EXPECT_GT(steps_, kills_);
}

}  // namespace
}  // namespace btrieve::test
