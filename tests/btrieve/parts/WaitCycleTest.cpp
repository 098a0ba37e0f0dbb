// Cycles of waits: found in notes, and by processes' looks at each other. Every "process" here is
// a wait of this one.

#include <deque>
#include <random>

#include "btrieve/locks/LockWait.h"
#include "btrieve/locks/WaitCycle.h"
#include "kit/Bytes.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

// Waits as text: "ab" says that a waits for b, "a~b" that b has noted an earlier wait of a.
WaitNotes NotesOf(const std::string& began, const std::string& edges) {
  WaitNotes notes{};
  for (size_t i = 0; i < began.size(); ++i) {
    WaitNote& note = notes[began[i] - 'a'];
    note.since = 100 + i;
    note.number = 1000 + static_cast<uint64_t>(began[i]);
  }
  for (const std::string& edge : Split(edges, ' ')) {
    if (edge.empty()) continue;
    const uint64_t number = notes[edge.front() - 'a'].number;
    notes[edge.back() - 'a'].keepsWaiting[edge.front() - 'a'] = edge.size() == 2 ? number : 1;
  }
  return notes;
}

struct CycleCase {
  const char* name;
  const char* began;  // who waits, in the order in which they began
  const char* edges;
  const char* giveWay;  // each with its cycle
};

const CycleCase kCycles[] = {
    {"nobody waits for anybody", "abc", "", ""},
    {"a chain", "abc", "ab bc", ""},
    {"one keeps two waiting", "abc", "ac bc", ""},
    {"one waits for two", "abc", "ca cb", ""},
    {"two", "ab", "ab ba", "b:ab"},
    {"the latest gives way, wherever it sits", "ba", "ab ba", "a:ab"},
    {"three", "bca", "ab bc ca", "a:abc"},
    {"who waits for a cycle is not in it", "abc", "ab ba ca", "b:ab"},
    {"two cycles", "abcd", "ab ba cd dc", "b:ab d:cd"},
    {"two cycles with one in common", "abc", "ab ba ac ca", "b:ab c:ac"},
    {"the one in common is the latest", "abc", "ac ca bc cb", "c:ac"},
    {"an edge of an earlier wait", "ab", "ab b~a", ""},
    {"to one that does not wait", "ab", "ac ca", ""},
    {"all", "abcdefgh", "ab bc cd de ef fg gh ha", "h:abcdefgh"},
};

TEST(WaitCycle, HasOneMemberThatGivesWay) {
  for (const CycleCase& row : kCycles) {
    SCOPED_TRACE(row.name);
    const WaitNotes notes = NotesOf(row.began, row.edges);
    std::string found;
    for (size_t seat = 0; seat < kWaitSeats; ++seat) {
      WaitCycle cycle;
      if (!FindCycle(notes, seat, cycle)) continue;
      found += (found.empty() ? "" : " ") + std::string(1, static_cast<char>('a' + seat)) + ":";
      for (size_t i = 0; i < kWaitSeats; ++i) {
        if (cycle[i] == 0) continue;
        EXPECT_EQ(cycle[i], notes[i].number);
        found += static_cast<char>('a' + i);
      }
    }
    EXPECT_EQ(found, row.giveWay);
  }
}

// Like no file's of other processes that wait meanwhile.
const FileIdentity kFile{std::random_device{}(), 0xFEEDFACE};

// A process: the bytes it holds of one file, and its wait.
class Waiter {
 public:
  explicit Waiter(std::set<uint64_t> held) : held_(std::move(held)) {}

  bool Look(uint64_t wanted) {
    return wait_.IsToGiveWay({kFile, wanted}, [this](const Obstacle& obstacle) {
      return obstacle.file == kFile && held_.contains(obstacle.byte);
    });
  }

 private:
  LockWait wait_;
  std::set<uint64_t> held_;
};

std::string Looks(std::deque<Waiter>& waiters, const std::vector<uint64_t>& wanted) {
  std::string answers;
  for (size_t i = 0; i < waiters.size(); ++i) answers += waiters[i].Look(wanted[i]) ? '!' : '.';
  return answers;
}

TEST(LockWait, TheLatestOfACycleGivesWayOnceItIsSure) {
  std::deque<Waiter> waiters;
  for (const uint64_t held : {1, 2, 3}) waiters.emplace_back(std::set<uint64_t>{held});
  const std::vector<uint64_t> round = {2, 3, 1};
  EXPECT_EQ(Looks(waiters, round), "...");  // who waits is noted first
  std::string answers = Looks(waiters, round);
  for (int i = 0; i < 3 && answers == "..."; ++i) answers = Looks(waiters, round);
  EXPECT_EQ(answers, "..!");
  waiters.pop_back();
  EXPECT_EQ(Looks(waiters, round), "..");
  EXPECT_EQ(Looks(waiters, round), "..");
}

std::span<uint8_t> BytesOf(auto& notes) {
  return {reinterpret_cast<uint8_t*>(&notes), sizeof notes};
}

// The notes of a dead process stay.
TEST(LockWait, GivesWayToTheLivingOnly) {
  Waiter waiter({1});
  ASSERT_FALSE(waiter.Look(2));
  {
    SharedBoard other(kWaitBoard);
    WaitNotes notes;
    ASSERT_TRUE(other && other.Read(BytesOf(notes)));
    const auto waits = std::ranges::find(notes, Obstacle{kFile, 2}, &WaitNote::wanted);
    ASSERT_NE(waits, notes.end());
    WaitNote note{.since = 1, .number = 77, .wanted = {kFile, 1}};
    note.keepsWaiting[static_cast<size_t>(waits - notes.begin())] = waits->number;
    note.sum = SumOf(note);
    ASSERT_TRUE(other.Write(BytesOf(note)));
    EXPECT_FALSE(waiter.Look(2));
    EXPECT_TRUE(waiter.Look(2)) << "it lives";
  }
  EXPECT_FALSE(waiter.Look(2)) << "it is dead";
  WaitNote none;
  (void)SharedBoard(kWaitBoard).Write(BytesOf(none));
}

TEST(LockWait, GoesOnWhereNobodyHoldsOrTheWishChanges) {
  std::deque<Waiter> waiters;
  for (const uint64_t held : {1, 2}) waiters.emplace_back(std::set<uint64_t>{held});
  for (uint64_t other = 100; other < 106; ++other) {
    EXPECT_EQ(Looks(waiters, {2, other}), "..");  // wanted by nobody's holding
  }
  // A wish that is new at each look has not been seen twice.
  for (uint64_t turn = 0; turn < 6; ++turn) {
    EXPECT_EQ(Looks(waiters, {turn % 2 ? 2u : 200u, 1}), "..");
  }
}

}  // namespace
}  // namespace btrieve::test
