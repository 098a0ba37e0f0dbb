// What a call does that meets what another process holds: whether it waits, how long, and what it
// answers then. That it goes on when the other lets go is shown where processes wait in cycles.

#include <deque>

#include "clients/Together.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

// Meetings stand between ";": the last word is the call, the others come before it. In words "@"
// stands for the process that calls and "#" for its file.
struct Held {
  const char* name;
  const char* words;  // of process a, which holds
  Status status;      // of a call that meets it
  const char *waiting, *refused, *free;
};

const Held kHeld[] = {
    {"a record lock", "a#:eq1+300", kRecordInUse,
     "@#:eq1+100; @#:eq1+300; @#:eq1 @#:ext+300; @#:eq1 @#:upd1; @#:eq1 @#:upd1+300; @#:eq1 "
     "@#:del+100; @:cbegin @#:eq1 @#:upd1; @:cbegin+500 @#:eq1+100",
     "@#:eq1+200; @#:eq1+400; @#:eq1 @#:ext+400; @#:eq1 @#:upd1+200; @#:eq1 @#:upd1+400; @#:eq1 "
     "@#:del+200; @#:eq1 @#:del+400; @:cbegin+500 @#:eq1 @#:upd1; @:cbegin+500 @#:eq1 @#:del; "
     "@:cbegin+400 @#:eq1",
     "@#:eq1; @#:eq1 @#:ext; @#:stat; @#:eq2+300; @#:ins7+200"},
    {"a record lock, met by an exclusive transaction", "a#:eq1+300", kRecordInUse,
     "@:begin @#:eq2; @:begin @#:eq2+300; @:begin @#:ins7; @:begin @#:stat",
     "@:begin @#:eq2+200; @:begin @#:ins7+400", ""},
    {"a record changed in a concurrent transaction", "a:cbegin a#:eq1 a#:upd1", kRecordInUse,
     "@#:eq1+100; @#:eq1 @#:upd1; @#:eq1 @#:del; @:cbegin+300 @#:eq1; @:begin @#:eq2",
     "@#:eq1+200; @#:eq1 @#:upd1+200; @#:eq1 @#:del+400; @:begin @#:eq2+200",
     "@#:eq1; @#:ins7+200"},
    {"an uncommitted unique value", "a:cbegin a#:ins9", kRecordInUse,
     "@#:ins9; @#:ins9+300; @#:insx9; @#:eq2 @#:upd9; @:cbegin @#:ins9",
     "@#:ins9+200; @#:insx9+400; @#:eq2 @#:upd9+200; @:cbegin+500 @#:ins9", "@#:ins8+200"},
    {"a file of an exclusive transaction", "a:begin a#:eq1", kFileInUse,
     "@#:eq2+100; @#:eq2 @#:ext+100; @#:eq2 @#:upd2; @#:eq2 @#:del; @#:ins7; @#:insx7; @:begin "
     "@#:eq2; @:cbegin @#:ins7",
     "@#:eq2+200; @#:eq2 @#:ext+400; @#:eq2 @#:upd2+200; @#:eq2 @#:del+400; @#:ins7+200; "
     "@#:insx7+400; @:begin @#:eq2+200; @:cbegin+500 @#:ins7",
     "@#:eq2; @:cbegin @#:eq2; @#:stat"},
};

struct Meeting {
  std::string before, call;
};

std::vector<Meeting> Meetings(const char* text) {
  std::vector<Meeting> meetings;
  for (std::string words : Split(text, ';')) {
    if (words[0] == ' ') words.erase(0, 1);
    const size_t blank = words.rfind(' ');
    const bool alone = blank == std::string::npos;
    meetings.push_back({alone ? "" : words.substr(0, blank), words.substr(blank + 1)});
  }
  return meetings;
}

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
    const auto answersAtOnce = [&both](const char* meetings, Status status) {
      for (const Meeting& row : Meetings(meetings)) {
        SCOPED_TRACE(row.before + row.call);
        EXPECT_TRUE(AllWell(both.Run(For('b', 1, row.before))));
        const Stopwatch watch;
        EXPECT_EQ(both.Run(For('b', 1, row.call)), std::to_string(status));
        EXPECT_LT(watch.Seconds(), 1.0);
        both.Release('b');
      }
    };
    answersAtOnce(held.refused, held.status);
    answersAtOnce(held.free, kOk);
  }
}

// The waiting calls of one row, each in a process and on a file of its own.
class WaitingInVain {
 public:
  explicit WaitingInVain(const Held& held)
      : held_(held),
        meetings_(Meetings(held.waiting)),
        count_(static_cast<int>(meetings_.size())),
        all_(1 + count_, count_) {
    for (int i = 0; i < count_; ++i) {
      // A transaction begins once, whatever it holds.
      std::string words = For('a', i + 1, held.words);
      if (i > 0 && words.starts_with("a:")) words.erase(0, words.find(' ') + 1);
      EXPECT_TRUE(AllWell(all_.Run(words)));
      EXPECT_TRUE(AllWell(all_.Run(For(Caller(i), i + 1, meetings_[i].before))));
    }
  }

  void Begin() {
    for (int i = 0; i < count_; ++i) all_.Begin(For(Caller(i), i + 1, meetings_[i].call));
  }
  void Finish(const Stopwatch& watch) {
    SCOPED_TRACE(held_.name);
    for (int i = 0; i < count_; ++i) {
      SCOPED_TRACE(meetings_[i].before + meetings_[i].call);
      EXPECT_EQ(all_.Finish(Caller(i)), held_.status);
      EXPECT_GT(watch.Seconds(), 2.9);
    }
  }

 private:
  static char Caller(int i) { return static_cast<char>('b' + i); }

  const Held& held_;
  std::vector<Meeting> meetings_;
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
