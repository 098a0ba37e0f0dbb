// Processes that wait for each other: the last one of a cycle gives way with 78, at once; nobody
// else is told anything but what he waits for.
#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <thread>

#include "clients/Together.h"

namespace btrieve::test {
namespace {

// Far below the three seconds after which a wait is given up, far above what a busy machine needs.
constexpr double kSoon = 1.5;

struct CycleCase {
  const char* name;
  int files;
  const char *held, *wanted;  // what is wanted, by a, b, ...: the last closes the cycle
};

const CycleCase kCycles[] = {
    {"records of one file", 1, "a1:eq1+300 b1:eq2+300", "a1:eq2+300 b1:eq1+300"},
    {"single locks", 1, "a1:eq1+100 b1:eq2+100 a1:next b1:eq1", "a1:upd2 b1:upd1"},
    {"a write outside transactions", 1, "a1:eq1+300 b1:eq2+300 a1:eq2 b1:eq1", "a1:upd2 b1:del"},
    {"three over three files", 3, "a1:eq1+300 b2:eq2+300 c3:eq3+300",
     "a2:eq2+300 b3:eq3+300 c1:eq1+300"},
    {"five in one file", 1, "a1:eq1+300 b1:eq2+300 c1:eq3+300 d1:eq4+300 e1:eq5+300",
     "a1:eq2+300 b1:eq3+300 c1:eq4+300 d1:eq5+300 e1:eq1+300"},
    {"files of exclusive transactions", 2, "a:begin b:begin a1:eq1 b2:eq1", "a2:eq1 b1:eq1"},
    {"the same by writing", 2, "a:begin b:begin a1:ins8 b2:ins8", "a2:ins9 b1:ins9"},
    {"a record and a file", 2, "a1:eq1+300 b:begin b2:eq1", "a2:eq1+300 b1:eq1"},
    {"a file and a record", 2, "a:begin a2:eq1 b1:eq1+300", "a1:eq1 b2:ins9"},
    {"both hold records of the file that both want whole", 1,
     "a1:eq1+300 b1:eq2+300 a:begin b:begin", "a1:eq3 b1:eq3"},
    {"unique values", 1, "a:cbegin b:cbegin a1:ins8 b1:ins9", "a1:ins9 b1:ins8"},
    {"several records at once", 1, "a:cbegin b:cbegin a1:ins8 b1:ins9", "a1:insx9 b1:insx8"},
    {"records that were written", 1, "a:cbegin b:cbegin a1:eq1 a1:upd1 b1:eq2 b1:del a1:eq2 b1:eq1",
     "a1:upd2 b1:upd1"},
    {"a value and a record", 1, "a:cbegin b:cbegin a1:ins8 b1:eq2 b1:upd2 a1:eq2",
     "a1:upd2 b1:ins8"},
};

// Everybody who waits gets what he waits for when the one before him has given up his own.
TEST(Deadlock, TheLastOfACycleGivesWayAndTheOthersGoOn) {
  for (const CycleCase& row : kCycles) {
    SCOPED_TRACE(row.name);
    const std::vector<std::string> wanted = Split(row.wanted, ' ');
    Together all(static_cast<int>(wanted.size()), row.files);
    EXPECT_EQ(all.Run(row.held).find_first_not_of("0 "), std::string::npos);
    all.BeginInTurn(wanted);
    const Stopwatch watch;
    char name = static_cast<char>('a' + wanted.size() - 1);
    EXPECT_EQ(all.Finish(name), kDeadlock);
    EXPECT_LT(watch.Seconds(), kSoon);
    for (; name > 'a'; --name) {
      EXPECT_FALSE(all.Process(static_cast<char>(name - 1)).IsAnswered());
      all.Release(name);
      EXPECT_EQ(all.Finish(static_cast<char>(name - 1)), 0) << name;
    }
  }
}

TEST(Deadlock, LeavesCursorAndTransactionAsTheyWere) {
  Together both(2, 1);
  ASSERT_EQ(both.Run("b:cbegin b1:ins9 b1:eq2 a1:eq3+300 b1:eq1 a1:eq4"), "0 0 0 0 0 0");
  both.BeginInTurn({"a1:ins9", "b1:eq3+300"});
  EXPECT_EQ(both.Finish('b'), kDeadlock);
  EXPECT_EQ(NumberAt<int32_t>(both.Process('b').Call(kGetNext, 0, {.room = 20}).data, 0), 2);
  EXPECT_EQ(both.Run("b1:upd2 b:end"), "0 0");
  EXPECT_EQ(both.Finish('a'), kDuplicateKey);
  EXPECT_EQ(both.Run("a1:unlock a1:eq9 a1:eq2+300"), "0 0 0");
}

TEST(Deadlock, IsMetAgainUntilSomethingIsGivenUp) {
  Together both(2, 1);
  ASSERT_EQ(both.Run("a1:eq1+300 b1:eq2+300"), "0 0");
  both.BeginInTurn({"a1:eq2+300", "b1:eq1+300"});
  EXPECT_EQ(both.Finish('b'), kDeadlock);
  EXPECT_EQ(both.Run("b1:eq1+300 b1:unlock"), "78 0");
  EXPECT_EQ(both.Finish('a'), 0);
}

struct WaitCase {
  const char* name;
  int processes;
  const char *held, *wanted;
  const char* meanwhile;  // words of somebody who does not wait, and what they are answered
  const char* answers;
  char last;  // who does not wait, and lets go in the end
};

const WaitCase kNoCycles[] = {
    {"a chain of three", 3, "a1:eq1+300 b1:eq2+300", "c1:eq2+300 b1:eq1+300", "", "", 'a'},
    {"two for one", 3, "a1:eq1+300 b1:eq2+300 c1:eq3+300", "b1:eq1+300 c1:eq1+300", "a1:eq4+300",
     "0", 'a'},
    {"who does not wait closes no cycle", 2, "a1:eq1+300 b1:eq2+300", "a1:eq2+300",
     "b1:eq1+400 b1:eq1 b1:del+200", "84 0 84", 'b'},
};

// Each gives up what it has as soon as it has been answered.
void FinishAsTheyCome(Together& all, std::vector<std::string> words) {
  while (!words.empty()) {
    const auto answered = std::find_if(words.begin(), words.end(), [&](const std::string& word) {
      return all.Process(word[0]).IsAnswered();
    });
    if (answered == words.end()) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      continue;
    }
    EXPECT_EQ(all.Finish(answered->at(0)), 0) << *answered;
    all.Release(answered->at(0));
    words.erase(answered);
  }
}

TEST(Deadlock, IsNotSeenWhereSomebodyGoesOn) {
  constexpr std::chrono::milliseconds kLongEnough{300};
  for (const WaitCase& row : kNoCycles) {
    SCOPED_TRACE(row.name);
    const std::vector<std::string> wanted = Split(row.wanted, ' ');
    Together all(row.processes, 1);
    EXPECT_EQ(all.Run(row.held).find_first_not_of("0 "), std::string::npos);
    all.BeginInTurn(wanted);
    std::this_thread::sleep_for(kLongEnough);
    for (const std::string& word : wanted) EXPECT_FALSE(all.Process(word[0]).IsAnswered());
    EXPECT_EQ(all.Run(row.meanwhile), row.answers);
    all.Release(row.last);
    FinishAsTheyCome(all, wanted);
  }
}

TEST(Deadlock, IsGoneWithADeadMember) {
  Together all(3, 1);
  ASSERT_EQ(all.Run("a1:eq1+300 b1:eq2+300 c1:eq3+300"), "0 0 0");
  all.BeginInTurn({"a1:eq2+300", "b1:eq3+300", "c1:eq1+300"});
  all.Process('c').Kill();
  EXPECT_EQ(all.Finish('b'), 0);
  all.Release('b');
  EXPECT_EQ(all.Finish('a'), 0);
}

// a could go on but is kept from running: c waits for it, and the note of the dead b, who waited
// for c, makes no cycle of that.
TEST(Deadlock, IsNotSeenInWhatTheDeadHaveNoted) {
  Together all(3, 1);
  ASSERT_EQ(all.Run("a1:eq1+300 b1:eq2+300 c1:eq3+300"), "0 0 0");
  all.BeginInTurn({"a1:eq2+300", "b1:eq3+300"});
  std::this_thread::sleep_for(std::chrono::milliseconds(150));
  all.Process('a').Halt();
  all.Process('b').Kill();
  all.Begin("c1:eq1+300");
  std::this_thread::sleep_for(std::chrono::milliseconds(400));
  EXPECT_FALSE(all.Process('c').IsAnswered());
  all.Process('a').Resume();
  EXPECT_EQ(all.Finish('a'), 0);
  all.Release('a');
  EXPECT_EQ(all.Finish('c'), 0);
}

// One philosopher of those who share the records 1 to 4: takes two or three in any order, gives up
// all of them after a 78 and tries again.
class Philosopher {
 public:
  static constexpr int kForks = 4;
  using Owners = std::array<std::atomic<char>, kForks + 1>;

  Philosopher(Together& all, char name, Owners& owners)
      : all_(all), name_(name), owners_(owners), random_(static_cast<uint32_t>(name)) {}

  void Dine(int rounds) {
    std::vector<int> forks = {1, 2, 3, 4};
    for (int round = 0; round < rounds; ++round) {
      std::shuffle(forks.begin(), forks.end(), random_);
      const size_t count = 2 + random_() % 2;
      while (!TakeAll({forks.begin(), forks.begin() + static_cast<std::ptrdiff_t>(count)})) {
        ++deadlocks_;
        std::this_thread::sleep_for(std::chrono::milliseconds(random_() % 20));
      }
    }
  }
  int Deadlocks() const { return deadlocks_; }

 private:
  bool TakeAll(const std::vector<int>& forks) {
    std::vector<int> taken;
    std::string answer = "0";
    for (size_t i = 0; i < forks.size() && answer == "0"; ++i) {
      answer = all_.Run(Place() + ":eq" + std::to_string(forks[i]) + "+300");
      if (answer == "0") taken.push_back(Take(forks[i]));
    }
    EXPECT_TRUE(answer == "0" || answer == "78") << answer;
    for (const int fork : taken) EXPECT_EQ(owners_[fork].exchange(0), name_) << "fork " << fork;
    EXPECT_EQ(all_.Run(Place() + ":unlock"), taken.empty() ? "81" : "0");
    return answer == "0";
  }
  int Take(int fork) {
    EXPECT_EQ(owners_[fork].exchange(name_), 0) << "fork " << fork;
    std::this_thread::sleep_for(std::chrono::milliseconds(random_() % 4));
    return fork;
  }
  std::string Place() const { return std::string(1, name_) + "1"; }

  Together& all_;
  char name_;
  Owners& owners_;
  std::mt19937 random_;
  int deadlocks_ = 0;
};

TEST(Deadlock, PhilosophersAllDine) {
  constexpr int kRounds = 25;
  Together all(4, 1);
  Philosopher::Owners owners{};
  std::vector<Philosopher> philosophers;
  for (const char name : {'a', 'b', 'c', 'd'}) philosophers.emplace_back(all, name, owners);
  std::vector<std::thread> threads;
  for (Philosopher& each : philosophers) threads.emplace_back([&] { each.Dine(kRounds); });
  for (std::thread& thread : threads) thread.join();
  int deadlocks = 0;
  for (const Philosopher& each : philosophers) deadlocks += each.Deadlocks();
  EXPECT_GT(deadlocks, 0) << "nobody ever met anybody";
  RecordProperty("deadlocks", deadlocks);
}

}  // namespace
}  // namespace btrieve::test
