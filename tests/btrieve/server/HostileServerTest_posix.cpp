// A server whose answers are cut off, garbled or said twice: every call gives a status, in time,
// and what it gives with a 0 has a record's length. Once harm is over the file opens again.
#include "HostileProxy.h"
#include "ServerSite.h"
#include "clients/TestFile.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

using namespace std::chrono_literals;

class HostileServer : public ServerSite {
 protected:
  static constexpr size_t kLength = 8;

  void SetUp() override {
    ServerSite::SetUp();
    file_.Make(PairBlock());
    for (int32_t id = 0; id < 200; ++id) ASSERT_EQ(file_.Insert(Pair(id)), 0);
    ASSERT_EQ(file_.Close(), 0);
    Move(file_.Path(), "pairs");
  }
  int ServerPort() const {
    for (const auto& [word, value] : Address().words) {
      if (word == "port") return std::stoi(value);
    }
    return 0;
  }
  void LinkThrough(int port) {
    server::LinkFile link = LinkTo("pairs");
    link.server = AddressWith("port", std::to_string(port));
    link.server.words.emplace_back("sslmode", "disable");
    WriteText(file_.Path(), server::WriteLinkFile(link));
  }
  // The records read without harm; whatever a call did wrong is a failed test.
  int ReadEverything() {
    int good = 0;
    if (Try(kOpen, {.key = PathKey(file_.Path())}) != 0) return good;
    for (const int operation : {kGetFirst, kGetLast, kStepFirst, kGetByPercentage, kStat}) {
      const bool forward = operation != kGetLast;
      const int next = operation == kStepFirst ? kStepNext : forward ? kGetNext : kGetPrevious;
      const CallIn in{.data = Bytes(2), .room = operation == kStat ? 200u : kLength};
      if (Try(operation, in) != 0 || operation == kStat) continue;
      while (Try(next, {.room = kLength}) == 0) ++good;
    }
    Try(kClose, {});
    return good;
  }

 private:
  Status Try(int operation, const CallIn& in) {
    const auto begin = std::chrono::steady_clock::now();
    const CallOut out = file_.Call(operation, in);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, server::kAnswerLimit + 5s) << operation;
    if (out.status == 0 && operation != kOpen && operation != kClose && operation != kStat) {
      EXPECT_EQ(out.length, kLength) << operation;
    }
    return out.status;
  }

 protected:
  TestFile file_;
};

TEST_F(HostileServer, DoesNoMoreThanGiveStatuses) {
  const uint32_t seed = qrn::test::Seed();
  int harmless = 0;
  {
    const HostileProxy proxy(ServerPort(), Harm::None, 0, seed);
    LinkThrough(proxy.Port());
    harmless = ReadEverything();
  }
  ASSERT_GT(harmless, 600);
  int cutShort = 0;
  for (uint32_t round = 0; round < qrn::test::Setting("QRN_HOSTILE_ROUNDS", 12); ++round) {
    SCOPED_TRACE("QRN_SEED=" + std::to_string(seed + round));
    Choices choices(seed + round);
    const Harm harm = round % 3 == 0 ? Harm::Cut : round % 3 == 1 ? Harm::Garble : Harm::Repeat;
    const HostileProxy proxy(ServerPort(), harm, choices.Pick(choices.Chance(2) ? 1500 : 30000),
                             seed + round);
    LinkThrough(proxy.Port());
    if (ReadEverything() < harmless) ++cutShort;
  }
  EXPECT_GT(cutShort, 0);
  LinkThrough(ServerPort());
  EXPECT_EQ(ReadEverything(), harmless);
}

}  // namespace
}  // namespace btrieve::test
