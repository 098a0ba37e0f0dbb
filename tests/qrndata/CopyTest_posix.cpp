// Copies of a database that others work on: of no transaction a half is there.
#include <atomic>
#include <sstream>
#include <thread>

#include "ToolFixture.h"
#include "clients/Remote.h"

namespace qrndata::test {
namespace {

using btrieve::test::CallIn;
using btrieve::test::OtherProcess;
using btrieve::test::PathKey;

constexpr char kBank[] = R"([[table]]
name = "North"
field = [ { name = "Id", type = "Integer" }, { name = "Sum", type = "Integer" } ]
key = [ { fields = ["Id"] } ]
[[table]]
name = "South"
field = [ { name = "Id", type = "Integer" }, { name = "Sum", type = "Integer" } ]
key = [ { fields = ["Id"] } ]
[[table]]
name = "Ledger"
field = [ { name = "Id", type = "Integer" }, { name = "Sum", type = "Integer" } ]
key = [ { fields = ["Id"] } ])";

constexpr int kAccounts = 4, kOpening = 1000;

btrieve::test::Bytes Row(int id, int sum) {
  btrieve::test::Bytes row(8);
  std::memcpy(row.data(), &id, sizeof id);
  std::memcpy(row.data() + sizeof id, &sum, sizeof sum);
  return row;
}

// A process that moves money from the north to the south, and notes it.
class Teller {
 public:
  Teller(const std::string& folder, int first, bool isConcurrent)
      : next_(first),
        begin_(btrieve::test::kBegin + (isConcurrent ? btrieve::test::kConcurrent : 0)) {
    int block = 0;
    for (const char* name : {"/North.btr", "/South.btr", "/Ledger.btr"}) {
      EXPECT_EQ(
          process_.Call(btrieve::test::kOpen, block++, {.key = PathKey(folder + name)}).status, 0);
    }
  }

  void Transfer() {
    const int account = 1 + next_ % kAccounts, amount = 1 + next_ % 7;
    if (process_.Call(begin_, 0, {}).status != 0) return;
    const bool isDone =
        Add(0, account, -amount) && Add(1, account, amount) &&
        process_.Call(btrieve::test::kInsert, 2, {.data = Row(next_, amount), .keyNumber = -1})
                .status == 0;
    ++next_;
    process_.Call(isDone ? btrieve::test::kEnd : btrieve::test::kAbort, 0, {});
  }
  void Kill() { process_.Kill(); }

 private:
  bool Add(int block, int id, int amount) {
    btrieve::test::Bytes key(4);
    std::memcpy(key.data(), &id, sizeof id);
    const auto got = process_.Call(btrieve::test::kGetEqual, block, {.room = 8, .key = key});
    if (got.status != 0) return false;
    int sum = 0;
    std::memcpy(&sum, got.data.data() + sizeof id, sizeof sum);
    return process_.Call(btrieve::test::kUpdate, block, {.data = Row(id, sum + amount)}).status ==
           0;
  }

  OtherProcess process_;
  int next_;
  int begin_;
};

class Copies : public ToolTest {
 protected:
  void SetUp() override {
    Build(kBank);
    std::string csv = "Id,Sum\n";
    for (int id = 1; id <= kAccounts; ++id) {
      csv += std::to_string(id) + "," + std::to_string(kOpening) + "\n";
    }
    ASSERT_EQ(Import("North", csv).code, 0);
    ASSERT_EQ(Import("South", csv).code, 0);
  }

  int Sum(const std::string& folder, const std::string& table) const {
    std::istringstream rows(Run({"export", Path(folder), table}).out);
    std::string line;
    int sum = 0;
    std::getline(rows, line);
    while (std::getline(rows, line)) sum += std::stoi(line.substr(line.find(',') + 1));
    return sum;
  }

  void ExpectWholeTransactions(const std::string& folder) const {
    const int moved = Sum(folder, "Ledger");
    EXPECT_EQ(Sum(folder, "North"), kAccounts * kOpening - moved) << folder;
    EXPECT_EQ(Sum(folder, "South"), kAccounts * kOpening + moved) << folder;
    EXPECT_EQ(Run({"check", Path(folder)}).code, 0) << folder;
  }
};

TEST_F(Copies, HoldWholeTransactionsWhileOthersWork) {
  std::atomic<bool> isOver = false;
  Teller one(Path("db"), 1, true), two(Path("db"), 1000001, false);
  std::vector<std::jthread> work;
  for (Teller* teller : {&one, &two}) {
    work.emplace_back([&isOver, teller] {
      while (!isOver) teller->Transfer();
    });
  }
  constexpr int kCopies = 12;
  int former = -1;
  for (int copy = 0; copy < kCopies; ++copy) {
    const std::string name = "copy" + std::to_string(copy);
    const Said said = Run({"copy", Path("db"), Path(name)});
    ASSERT_EQ(Line(said), "code=0 out=" + name + ": 3 tables, 6 files\n");
    ExpectWholeTransactions(name);
    EXPECT_GE(Sum(name, "Ledger"), former);
    former = Sum(name, "Ledger");
  }
  isOver = true;
  work.clear();
  EXPECT_GT(former, 0);
  ExpectWholeTransactions("db");
}

// What the dead have left over several files is settled in the copy as in the files.
TEST_F(Copies, SettleWhatTheDeadHaveLeft) {
  for (int round = 0; round < 4; ++round) {
    auto teller = std::make_unique<Teller>(Path("db"), 1 + 1000000 * round, true);
    std::jthread work([&] {
      for (int step = 0; step < 2000; ++step) teller->Transfer();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(40 + 17 * round));
    teller->Kill();
    work.join();
    const std::string name = "copy" + std::to_string(round);
    ASSERT_EQ(Run({"copy", Path("db"), Path(name)}).code, 0);
    ExpectWholeTransactions(name);
  }
}

TEST_F(Copies, NothingIsThereAfterAFailure) {
  Write("db/South.btr", "no data file");
  const Said said = Run({"copy", Path("db"), Path("copy")});
  EXPECT_EQ(Line(said),
            "code=4 err=qrndata: db/South.btr: status 30 (not a file of the record manager); "
            "nothing was copied\n");
  EXPECT_FALSE(std::filesystem::exists(Folder() / "copy"));
  EXPECT_FALSE(std::filesystem::exists(Folder() / "copy.1.part"));
  EXPECT_EQ(Run({"copy", Path("db"), Path("db")}).code, 4);
  const Said checked = Check();
  EXPECT_EQ(checked.code, 1);
  EXPECT_NE(checked.out.find("South: db/South.btr: status 30"), std::string::npos) << checked.out;
}

}  // namespace
}  // namespace qrndata::test
