// What a call does that meets what another process holds: whether it waits, how long, and what it
// answers then. That it goes on when the other lets go is shown where processes wait in cycles.

#include <deque>

#include "clients/Together.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

// In words "@" stands for the process that calls and "#" for its file.
struct Meeting {
  const char* before;  // words of the process that calls
  const char* call;
  Status status;
};

struct Held {
  const char* name;
  const char* words;  // of process a, which holds
  std::vector<Meeting> waiting, atOnce;
};

const Held kHeld[] = {
    {"a record lock",
     "a#:eq1+300",
     {{"", "@#:eq1+100", kRecordInUse},
      {"", "@#:eq1+300", kRecordInUse},
      {"@#:eq1", "@#:ext+300", kRecordInUse},
      {"@#:eq1", "@#:upd1", kRecordInUse},
      {"@#:eq1", "@#:upd1+300", kRecordInUse},
      {"@#:eq1", "@#:del+100", kRecordInUse},
      {"@:cbegin @#:eq1", "@#:upd1", kRecordInUse},
      {"@:cbegin+500", "@#:eq1+100", kRecordInUse}},
     {{"", "@#:eq1", 0},
      {"@#:eq1", "@#:ext", 0},
      {"", "@#:stat", 0},
      {"", "@#:eq1+200", kRecordInUse},
      {"", "@#:eq1+400", kRecordInUse},
      {"@#:eq1", "@#:ext+400", kRecordInUse},
      {"@#:eq1", "@#:upd1+200", kRecordInUse},
      {"@#:eq1", "@#:upd1+400", kRecordInUse},
      {"@#:eq1", "@#:del+200", kRecordInUse},
      {"@#:eq1", "@#:del+400", kRecordInUse},
      {"@:cbegin+500 @#:eq1", "@#:upd1", kRecordInUse},
      {"@:cbegin+500 @#:eq1", "@#:del", kRecordInUse},
      {"@:cbegin+400", "@#:eq1", kRecordInUse},
      {"", "@#:eq2+300", 0},
      {"", "@#:ins7+200", 0}}},
    {"a record lock, met by an exclusive transaction",
     "a#:eq1+300",
     {{"@:begin", "@#:eq2", kRecordInUse},
      {"@:begin", "@#:eq2+300", kRecordInUse},
      {"@:begin", "@#:ins7", kRecordInUse},
      {"@:begin", "@#:stat", kRecordInUse}},
     {{"@:begin", "@#:eq2+200", kRecordInUse}, {"@:begin", "@#:ins7+400", kRecordInUse}}},
    {"a record changed in a concurrent transaction",
     "a:cbegin a#:eq1 a#:upd1",
     {{"", "@#:eq1+100", kRecordInUse},
      {"@#:eq1", "@#:upd1", kRecordInUse},
      {"@#:eq1", "@#:del", kRecordInUse},
      {"@:cbegin+300", "@#:eq1", kRecordInUse},
      {"@:begin", "@#:eq2", kRecordInUse}},
     {{"", "@#:eq1", 0},
      {"", "@#:eq1+200", kRecordInUse},
      {"@#:eq1", "@#:upd1+200", kRecordInUse},
      {"@#:eq1", "@#:del+400", kRecordInUse},
      {"@:begin", "@#:eq2+200", kRecordInUse},
      {"", "@#:ins7+200", 0}}},
    {"an uncommitted unique value",
     "a:cbegin a#:ins9",
     {{"", "@#:ins9", kRecordInUse},
      {"", "@#:ins9+300", kRecordInUse},
      {"", "@#:insx9", kRecordInUse},
      {"@#:eq2", "@#:upd9", kRecordInUse},
      {"@:cbegin", "@#:ins9", kRecordInUse}},
     {{"", "@#:ins9+200", kRecordInUse},
      {"", "@#:insx9+400", kRecordInUse},
      {"@#:eq2", "@#:upd9+200", kRecordInUse},
      {"@:cbegin+500", "@#:ins9", kRecordInUse},
      {"", "@#:ins8+200", 0}}},
    {"a file of an exclusive transaction",
     "a:begin a#:eq1",
     {{"", "@#:eq2+100", kFileInUse},
      {"@#:eq2", "@#:ext+100", kFileInUse},
      {"@#:eq2", "@#:upd2", kFileInUse},
      {"@#:eq2", "@#:del", kFileInUse},
      {"", "@#:ins7", kFileInUse},
      {"", "@#:insx7", kFileInUse},
      {"@:begin", "@#:eq2", kFileInUse},
      {"@:cbegin", "@#:ins7", kFileInUse}},
     {{"", "@#:eq2", 0},
      {"@:cbegin", "@#:eq2", 0},
      {"", "@#:stat", 0},
      {"", "@#:eq2+200", kFileInUse},
      {"@#:eq2", "@#:ext+400", kFileInUse},
      {"@#:eq2", "@#:upd2+200", kFileInUse},
      {"@#:eq2", "@#:del+400", kFileInUse},
      {"", "@#:ins7+200", kFileInUse},
      {"", "@#:insx7+400", kFileInUse},
      {"@:begin", "@#:eq2+200", kFileInUse},
      {"@:cbegin+500", "@#:ins7", kFileInUse}}},
};

// The words with process and file put in.
std::string For(char process, int file, std::string words) {
  std::replace(words.begin(), words.end(), '@', process);
  std::replace(words.begin(), words.end(), '#', static_cast<char>('0' + file));
  return words;
}

bool AllWell(const std::string& answers) {
  return answers.find_first_not_of("0 ") == std::string::npos;
}

TEST(WaitingCall, AnswersAtOnceWhereItNeedNotOrMustNotWait) {
  for (const Held& held : kHeld) {
    SCOPED_TRACE(held.name);
    Together both(2, 1);
    EXPECT_TRUE(AllWell(both.Run(For('a', 1, held.words))));
    for (const Meeting& row : held.atOnce) {
      SCOPED_TRACE(row.call);
      EXPECT_TRUE(AllWell(both.Run(For('b', 1, row.before)))) << row.before;
      const Stopwatch watch;
      EXPECT_EQ(both.Run(For('b', 1, row.call)), std::to_string(row.status)) << row.before;
      EXPECT_LT(watch.Seconds(), 1.0);
      both.Release('b');
    }
  }
}

// The waiting calls of one row, each in a process and on a file of its own.
class WaitingInVain {
 public:
  explicit WaitingInVain(const Held& held)
      : held_(held), count_(static_cast<int>(held.waiting.size())), all_(1 + count_, count_) {
    for (int i = 0; i < count_; ++i) {
      // A transaction begins once, whatever it holds.
      std::string words = For('a', i + 1, held.words);
      if (i > 0 && words.starts_with("a:")) words.erase(0, words.find(' ') + 1);
      EXPECT_TRUE(AllWell(all_.Run(words)));
      EXPECT_TRUE(AllWell(all_.Run(For(Caller(i), i + 1, held.waiting[i].before))));
    }
  }

  void Begin() {
    for (int i = 0; i < count_; ++i) all_.Begin(For(Caller(i), i + 1, held_.waiting[i].call));
  }
  void Finish(const Stopwatch& watch) {
    SCOPED_TRACE(held_.name);
    for (int i = 0; i < count_; ++i) {
      const Meeting& row = held_.waiting[i];
      EXPECT_EQ(all_.Finish(Caller(i)), row.status) << row.before << " " << row.call;
      EXPECT_GT(watch.Seconds(), 2.9) << row.before << " " << row.call;
    }
  }

 private:
  static char Caller(int i) { return static_cast<char>('b' + i); }

  const Held& held_;
  int count_;
  Together all_;
};

TEST(WaitingCall, GivesUpAfterThreeSecondsWhereItMayWait) {
  std::deque<WaitingInVain> rows;
  for (const Held& held : kHeld) rows.emplace_back(held);
  const Stopwatch watch;
  for (WaitingInVain& row : rows) row.Begin();
  for (WaitingInVain& row : rows) row.Finish(watch);
  EXPECT_LT(watch.Seconds(), 15);
}

}  // namespace
}  // namespace btrieve::test
