// A server whose answers are cut off, garbled or said twice: every call gives a status, in time,
// and what it gives with a 0 has a record's length. Once harm is over the file opens again.
#include <fstream>

#include "HostileSite.h"
#include "MessageMarks.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

using namespace std::chrono_literals;

constexpr Harm kAllHarms[] = {Harm::Cut,       Harm::Garble,    Harm::Repeat,
                              Harm::Unceasing, Harm::Boundless, Harm::Late};

TEST_F(HostileServer, DoesNoMoreThanGiveStatuses) {
  const uint32_t seed = qrn::test::Seed();
  int harmless = 0;
  {
    const Proxy proxy(ServerPort(), {});
    LinkThrough(proxy.Port());
    harmless = ReadEverything();
  }
  ASSERT_GT(harmless, 600);
  int cutShort = 0;
  for (uint32_t round = 0; round < qrn::test::Setting("QRN_HOSTILE_ROUNDS", 12); ++round) {
    SCOPED_TRACE("QRN_SEED=" + std::to_string(seed + round));
    Choices choices(seed + round);
    const HarmPlan plan{.harm = kAllHarms[round % std::size(kAllHarms)],
                        .behind = choices.Pick(choices.Chance(2) ? 1500 : 30000),
                        .seed = seed + round,
                        .wait = 50ms};
    const Proxy proxy(ServerPort(), {}, Doing(plan));
    LinkThrough(proxy.Port());
    if (ReadEverything() < harmless) ++cutShort;
  }
  EXPECT_GT(cutShort, 0);
  LinkThrough(ServerPort());
  EXPECT_EQ(ReadEverything(), harmless);
}

// Bytes that the process has come to hold since the last time this was asked for.
size_t HeldAtMost() {
  std::ifstream status("/proc/self/status");
  size_t kilobytes = 0;
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) kilobytes = std::stoul(line.substr(6));
  }
  std::ofstream("/proc/self/clear_refs") << 5;
  return kilobytes * 1024;
}

// What one look at the socket takes in, and what the sanitizer keeps of memory given back, come on
// top of the longest answer. Without a limit it is four times as much.
constexpr size_t kMostHeld = size_t{1200} << 20;

TEST_F(HostileServer, FillsNoMemoryWithAnAnswerThatDoesNotEnd) {
  std::vector<size_t> messages;
  {
    const Proxy proxy(ServerPort(), {}, [&] { return std::make_unique<MarkedAnswers>(messages); });
    LinkThrough(proxy.Port());
    ReadEverything();
  }
  ASSERT_GT(messages.size(), 700u);
  const size_t before = HeldAtMost();
  for (const Harm harm : {Harm::Unceasing, Harm::Boundless}) {
    for (const size_t message : {44u, 700u}) {  // of the opening, of a walk
      const Proxy proxy(ServerPort(), {}, Doing({.harm = harm, .behind = messages[message]}));
      LinkThrough(proxy.Port());
      const auto begin = std::chrono::steady_clock::now();
      ReadEverything();
      EXPECT_LT(std::chrono::steady_clock::now() - begin, server::kAnswerLimit / 3) << message;
      EXPECT_LT(HeldAtMost(), before + kMostHeld) << message;
    }
  }
}

}  // namespace
}  // namespace btrieve::test
