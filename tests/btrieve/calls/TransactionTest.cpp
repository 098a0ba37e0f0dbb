// Transactions of one process, exclusive and concurrent, on one file and on two.
#include <gtest/gtest.h>

#include "clients/People.h"

namespace btrieve::test {
namespace {

const ScriptCase kCases[] = {
    {"twice, alone", "begin begin end end abort", "ok #37 ok #39 #39"},
    {"either kind excludes the other", "begin cbegin abort cbegin begin abort",
     "ok #37 ok ok #37 ok"},
    {"inserted record vanishes by Abort", "begin ins0=9 abort pos del upd0=9 prev0 next0 next0",
     "ok ok ok #8 #8 #8 5 #9 #9"},
    {"deleted record comes back", "begin eq0=3 del abort next0 eq0=3", "ok 3 ok ok 4 3"},
    {"updated record is as before", "begin eq0=3 upd0=6,Zed abort next0 walk1",
     "ok 3 ok ok #9 1,3,2,5,4"},
    {"currency is left by End", "begin eq0=3 end next0 begin next0 end next0",
     "ok 3 ok 4 ok 5 ok #9"},
    {"a file closed inside is kept to the end", "b:open begin ins0=9 close b:walk0 end b:walk0",
     "ok ok ok ok 1,2,3,4,5,9 ok 1,2,3,4,5,9"},
    {"a file closed inside, aborted", "b:open begin ins0=9 close abort b:walk0",
     "ok ok ok ok ok 1,2,3,4,5"},
    {"the only cursor closed inside", "begin ins0=9 close end open walk0",
     "ok ok ok ok ok 1,2,3,4,5,9"},
    {"the only cursor closed inside, aborted", "begin ins0=9 close abort open walk0",
     "ok ok ok ok ok 1,2,3,4,5"},
    {"positions seen within are not given again after Abort",
     "begin ins0=9 ins0=8 abort ins0=7 begin ins0=6 end direct-=9 direct-=8 direct-=7 direct-=6",
     "ok ok ok ok ok ok ok ok #43 #43 7 6"},
    {"a cursor left there finds what comes later", "b:open begin ins0=9 abort b:ins0=8 stepn",
     "ok ok ok ok ok 8"},
};

std::string Concurrent(std::string words) {
  for (size_t at = words.find("begin"); at != std::string::npos; at = words.find("begin", at)) {
    const bool already = at > 0 && words[at - 1] == 'c';
    if (!already) words.insert(at, "c");
    at += 6;
  }
  return words;
}

void RunAll(bool concurrent) {
  for (const ScriptCase& row : kCases) {
    SCOPED_TRACE(row.name);
    const Folder folder;
    ThisProcess process;
    Script script(process, folder.Path("people.dat"));
    script.Create(kFive);
    EXPECT_EQ(script.Run(concurrent ? Concurrent(row.words) : row.words), row.answers);
  }
}

TEST(Transaction, Exclusive) { RunAll(false); }

TEST(Transaction, Concurrent) { RunAll(true); }

struct TwoFiles : testing::TestWithParam<const char*> {
  void SetUp() override {
    orders_.Assign('a', process_, 10);
    people_.Create(kFive);
    orders_.Create({"1", "2"});
  }

  std::string Both() { return people_.Run("walk0") + " | " + orders_.Run("walk0"); }

  Folder folder_;
  ThisProcess process_;
  Script people_{process_, folder_.Path("people.dat")};
  Script orders_{process_, folder_.Path("orders.dat")};
};

TEST_P(TwoFiles, AbortUndoesBothAndEndKeepsBoth) {
  EXPECT_EQ(people_.Run(std::string(GetParam()) + " ins0=9 eq0=1 del"), "ok ok 1 ok");
  EXPECT_EQ(orders_.Run("ins0=7 eq0=1 upd0=3"), "ok 1 ok");
  EXPECT_EQ(Both(), "2,3,4,5,9 | 2,3,7");
  EXPECT_EQ(people_.Run("abort"), "ok");
  EXPECT_EQ(Both(), "1,2,3,4,5 | 1,2");

  EXPECT_EQ(people_.Run(std::string(GetParam()) + " ins0=9"), "ok ok");
  EXPECT_EQ(orders_.Run("ins0=7"), "ok");
  EXPECT_EQ(people_.Run("end"), "ok");
  EXPECT_EQ(Both(), "1,2,3,4,5,9 | 1,2,7");
}

TEST_P(TwoFiles, AnEndLeavesNothingToTheNextTransaction) {
  const std::string begin = GetParam();
  people_.Run(begin + " ins0=9");
  orders_.Run("ins0=7");
  EXPECT_EQ(people_.Run("end " + begin + " abort " + begin + " eq0=9 del abort eq0=9"),
            "ok ok ok ok 9 ok ok 9");
}

INSTANTIATE_TEST_SUITE_P(Kinds, TwoFiles, testing::Values("begin", "cbegin"));

TEST(Transaction, FilesCannotBeRebuiltInside) {
  const Folder folder;
  ThisProcess process;
  Script script(process, folder.Path("people.dat"));
  script.Create(kFive);
  ASSERT_EQ(script.Run("begin"), "ok");
  const Bytes owner = Padded("secret", 7, '\0');
  EXPECT_EQ(process.Call(kSetOwner, 0, {.data = owner, .key = owner}).status, kNotAllowed);
  EXPECT_EQ(process.Call(kClearOwner, 0, {}).status, kNotAllowed);
  EXPECT_EQ(process.Call(kCreateIndex, 0, {.data = SegmentBytes({})}).status, kNotAllowed);
  EXPECT_EQ(process.Call(kDropIndex, 0, {}).status, kNotAllowed);
  EXPECT_EQ(script.Run("end"), "ok");
}

}  // namespace
}  // namespace btrieve::test
