// Imports while another process works on the same table.
#include <chrono>
#include <csignal>
#include <future>
#include <thread>

#include "ToolFixture.h"
#include "clients/Remote.h"
#include "tools/qrndata/Failure.h"

namespace qrndata::test {
namespace {

using btrieve::test::CallIn;
using btrieve::test::CallOut;
using btrieve::test::OtherProcess;
using btrieve::test::PathKey;
using Clock = std::chrono::steady_clock;

constexpr int kFirstOfForm = 1000000;

// The record manager's own wait, of three seconds, is what stays.
const std::vector<std::string> kNoPatience = {"--patience", "0"};

constexpr char kLocksSchema[] = R"([[table]]
name = "T"
field = [ { name = "Id", type = "Integer" }, { name = "Name", type = "String", size = 6 } ]
key = [ { name = "ById", fields = ["Id"] }, { fields = ["Name"], duplicates = true } ])";

std::string Rows(int first, int count) {
  std::string csv = "Id\n";
  for (int row = 0; row < count; ++row) csv += std::to_string(first + row) + "\n";
  return csv;
}

class BesideAForm : public ToolTest {
 protected:
  void SetUp() override {
    Build(kLocksSchema);
    ASSERT_EQ(Import("T", "Id,Name\n1,a\n2,b\n").code, 0);
    ASSERT_EQ(Call(btrieve::test::kOpen, {.key = PathKey(Path("db/T.btr"))}).status, 0);
  }

  CallOut Call(int operation, const CallIn& in) { return form_.Call(operation, 0, in); }
  int FormInserts(int id) {
    btrieve::test::Bytes record(10, ' ');
    for (int at = 0; at < 4; ++at) record[at] = static_cast<uint8_t>(id >> (8 * at));
    return Call(btrieve::test::kInsert, {.data = record, .keyNumber = -1}).status;
  }
  std::future<Said> ImportAside(const std::string& csv, std::vector<std::string> options = {}) {
    return std::async(std::launch::async, [=, this] { return Import("T", csv, options); });
  }

  OtherProcess form_;
};

TEST_F(BesideAForm, ALockedRecordDoesNotStopAnImport) {
  ASSERT_EQ(Call(btrieve::test::kGetFirst + 200, {.room = 10}).status, 0);
  EXPECT_EQ(Line(Import("T", Rows(10, 50))), "code=0 out=T: 50 rows taken\n");
}

TEST_F(BesideAForm, CtrlCIsHeardWhileARowWaits) {
  ASSERT_EQ(Call(btrieve::test::kBegin, {}).status, 0);
  ASSERT_EQ(FormInserts(7), 0);
  const auto start = Clock::now();
  std::future<Said> import = ImportAside(Rows(10, 5), {"--patience", "3600"});
  while (Clock::now() < start + std::chrono::milliseconds(500)) std::this_thread::yield();
  raise(SIGINT);
  const Said said = import.get();
  EXPECT_EQ(said.code, kInterrupted) << Line(said);
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(20));
  EXPECT_EQ(Call(btrieve::test::kEnd, {}).status, 0);
}

TEST_F(BesideAForm, TheFormGoesOnWhileRowsAreTaken) {
  std::future<Said> import = ImportAside(Rows(1000, 40000), {"--batch", "1000"});
  int inserted = 0;
  auto longest = Clock::duration::zero();
  while (import.wait_for(std::chrono::milliseconds(5)) != std::future_status::ready) {
    const auto begun = Clock::now();
    ASSERT_EQ(FormInserts(kFirstOfForm + inserted), 0);
    ASSERT_EQ(Call(btrieve::test::kGetFirst + 200, {.room = 10}).status, 0);
    longest = std::max(longest, Clock::now() - begun);
    ++inserted;
  }
  EXPECT_EQ(import.get().out, "T: 40,000 rows taken\n");
  EXPECT_GT(inserted, 10);
  EXPECT_LT(longest, std::chrono::seconds(3));
  const Said checked = Check();
  EXPECT_EQ(checked.code, 0) << checked.out;
  EXPECT_EQ(Call(btrieve::test::kGetLast, {.room = 10}).status, 0);
}

// 11 is a value that the form's transaction is about to give, or not.
TEST_F(BesideAForm, ARowThatMeetsAnOpenTransactionWaitsForIt) {
  ASSERT_EQ(Call(btrieve::test::kBegin + btrieve::test::kConcurrent, {}).status, 0);
  ASSERT_EQ(FormInserts(11), 0);
  std::future<Said> import = ImportAside(Rows(10, 3));
  EXPECT_EQ(import.wait_for(std::chrono::seconds(1)), std::future_status::timeout);
  ASSERT_EQ(Call(btrieve::test::kAbort, {}).status, 0);
  EXPECT_EQ(Line(import.get()), "code=0 out=T: 3 rows taken\n");
}

TEST_F(BesideAForm, ARowThatWaitsInVainIsRefusedAlone) {
  ASSERT_EQ(Call(btrieve::test::kBegin + btrieve::test::kConcurrent, {}).status, 0);
  ASSERT_EQ(FormInserts(11), 0);
  EXPECT_EQ(Line(Import("T", Rows(10, 3), kNoPatience)),
            "code=1 out=T: 2 rows taken, 1 refused\n"
            " err=in.csv:3:1: status 84 (record in use by another program)\n");
}

TEST_F(BesideAForm, AFileThatIsHeldWholeIsWaitedForAndThenStopsTheImport) {
  ASSERT_EQ(Call(btrieve::test::kBegin, {}).status, 0);
  ASSERT_EQ(FormInserts(11), 0);
  EXPECT_EQ(Line(Import("T", Rows(12, 3), kNoPatience)),
            "code=4 err=qrndata: table \"T\": status 85 (file in use by another program); stopped "
            "before line 2 of in.csv; stored until there: 0 rows; --first 2 goes on\n");
  std::future<Said> import = ImportAside(Rows(10, 3));
  EXPECT_EQ(import.wait_for(std::chrono::seconds(4)), std::future_status::timeout);
  ASSERT_EQ(Call(btrieve::test::kEnd, {}).status, 0);
  EXPECT_EQ(import.get().out, "T: 2 rows taken, 1 refused\n");
}

}  // namespace
}  // namespace qrndata::test
