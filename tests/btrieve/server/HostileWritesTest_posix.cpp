// Environment: QRN_HOSTILE_WRITES, how many times harm is done (10); QRN_SEED.
//
// Harm at any message of the server's answers to writes and transactions: every call gives a status
// in time, and afterwards the file holds what was acknowledged, nothing of what was refused, and of
// what was interrupted all or nothing.
#include "HostileSite.h"
#include "MessageMarks.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

using namespace std::chrono_literals;

// What one round has been told: the worst status of each of its works.
struct Told {
  Status single = 0;      // an insert by itself
  Status exclusive = 0;   // two inserts in an exclusive transaction
  Status concurrent = 0;  // an update and an insert in a concurrent one
};

class HostileWrites : public HostileServer {
 protected:
  // The ids that a round inserts: the single one, the two, the one beside the update.
  static int32_t IdOf(int32_t round, int which) { return 1000 + 10 * round + which; }

  Told WriteAll(int32_t round) {
    Told told;
    if (const Status opened = Try(kOpen, {.key = PathKey(file_.Path())}); opened != 0) {
      return {opened, opened, opened};
    }
    told.single = Put(round, 0);
    told.exclusive = Within(kBegin, [&] {
      const Status first = Put(round, 1);
      return first != 0 ? first : Put(round, 2);
    });
    told.concurrent = Within(kConcurrent + kBegin, [&] {
      const CallIn first{.room = kLength, .key = Number(int32_t{0})};
      Status status = Try(kGetEqual + 400, first);
      if (status == 0) status = Try(kUpdate, {.data = Pair(0, round), .keyNumber = -1});
      return status != 0 ? status : Put(round, 3);
    });
    Try(kReset, {});
    return told;
  }
  // What the file holds, asked for without harm: values by id.
  std::map<int32_t, int32_t> ReadAll() {
    std::map<int32_t, int32_t> rows;
    LinkThrough(ServerPort());
    EXPECT_EQ(file_.Open(), 0);
    CallOut out = file_.Call(kGetFirst, {.room = kLength});
    for (; out.status == 0; out = file_.Call(kGetNext, {.room = kLength})) {
      rows[NumberAt<int32_t>(out.data, 0)] = NumberAt<int32_t>(out.data, 4);
    }
    EXPECT_EQ(out.status, kEndOfFile);
    size_t steps = 0;
    for (int op = kStepFirst; file_.Call(op, {.room = kLength}).status == 0; op = kStepNext) {
      ++steps;
    }
    EXPECT_EQ(steps, rows.size());
    EXPECT_EQ(file_.Counts(), std::to_string(steps) + " " + std::to_string(steps));
    file_.Call(kReset, {});
    return rows;
  }
  // What was acknowledged is there; what was refused while the server could be reached is not.
  void Judge(Status status, bool isThere, const char* what) {
    if (status == kNotActive) return;
    EXPECT_EQ(isThere, status == 0) << what << ": " << status;
  }

 private:
  Status Put(int32_t round, int which) {
    return Try(kInsert, {.data = Pair(IdOf(round, which), round), .keyNumber = -1});
  }
  template <class Body>
  Status Within(int begin, Body body) {
    Status status = Try(begin, {});
    if (status != 0) return status;
    status = body();
    if (status == 0) return Try(kEnd, {});
    Try(kAbort, {});
    return status;
  }
};

constexpr Harm kWriteHarms[] = {Harm::Cut,       Harm::Garble, Harm::Cut,      Harm::Late,
                                Harm::Unceasing, Harm::Repeat, Harm::Boundless};

// Without TLS a client cannot tell that something else was said than the server has said.
bool IsSilentHarm(Harm harm) { return harm == Harm::Garble || harm == Harm::Repeat; }

TEST_F(HostileWrites, LeaveWhatWasAcknowledgedAndNothingHalf) {
  const uint32_t seed = qrn::test::Seed();
  std::vector<size_t> messages;
  {
    const Proxy proxy(ServerPort(), {}, [&] { return std::make_unique<MarkedAnswers>(messages); });
    LinkThrough(proxy.Port());
    const Told told = WriteAll(0);
    ASSERT_EQ(told.single + told.exclusive + told.concurrent, 0);
  }
  ASSERT_GT(messages.size(), 50u);
  int interrupted = 0;
  const auto rounds = static_cast<int32_t>(qrn::test::Setting("QRN_HOSTILE_WRITES", 10));
  for (int32_t round = 1; round <= rounds; ++round) {
    const uint32_t roundSeed = seed + static_cast<uint32_t>(round);
    Choices choices(roundSeed);
    const Harm harm = kWriteHarms[static_cast<size_t>(round) % std::size(kWriteHarms)];
    const size_t message = choices.Pick(static_cast<uint32_t>(messages.size()));
    SCOPED_TRACE("QRN_SEED=" + std::to_string(seed) + ", round " + std::to_string(round) +
                 ", message " + std::to_string(message));
    Told told;
    {
      const Proxy proxy(ServerPort(), {},
                        Doing({harm, messages[message], roundSeed, std::chrono::milliseconds(50)}));
      LinkThrough(proxy.Port());
      told = WriteAll(round);
    }
    auto rows = ReadAll();
    interrupted += told.single != 0 || told.exclusive != 0 || told.concurrent != 0;
    EXPECT_EQ(rows.contains(IdOf(round, 1)), rows.contains(IdOf(round, 2)));
    if (IsSilentHarm(harm)) continue;
    Judge(told.single, rows.contains(IdOf(round, 0)), "the single one");
    Judge(told.exclusive, rows.contains(IdOf(round, 1)), "the exclusive transaction");
    Judge(told.concurrent, rows.contains(IdOf(round, 3)), "the concurrent transaction");
    EXPECT_EQ(rows[0] == round, rows.contains(IdOf(round, 3)));
  }
  EXPECT_GT(interrupted, rounds / 3);
}

}  // namespace
}  // namespace btrieve::test
