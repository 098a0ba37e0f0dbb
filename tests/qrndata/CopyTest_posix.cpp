// Copies of a database that others work on: of no transaction a half is there.
#include <thread>

#include "ToolFixture.h"
#include "clients/Branch.h"

namespace qrndata::test {
namespace {

using btrieve::test::Branch;
using btrieve::test::OtherProcess;

// The bank's files as a dictionary has them.
std::string BankSchema() {
  std::string schema;
  for (const char* name : {"North", "South", "Ledger", "Numbers"}) {
    const bool isNumbered = name == std::string("Numbers");
    schema += "[[table]]\nname = \"" + std::string(name) +
              "\"\nfield = [ { name = \"Id\", type = \"Integer\" }, { name = \"A\", type = \"" +
              (isNumbered ? "AutoInc\", size = 4" : "Integer\"") +
              " }, { name = \"B\", type = \"Integer\" }, { name = \"C\", type = \"Integer\" }, "
              "{ name = \"Text\", type = \"String\", size = 16 } ]\nkey = [ { fields = [\"Id\"] }, "
              "{ fields = [\"A\"]" +
              (isNumbered ? "" : ", duplicates = true, modifiable = true") +
              " }, { fields = [\"Text\"], duplicates = true, modifiable = true } ]\n";
  }
  return schema;
}

class Copies : public ToolTest {
 protected:
  void SetUp() override {
    std::filesystem::create_directory(Folder() / "db");
    {
      OtherProcess maker;
      ASSERT_TRUE(btrieve::test::MakeBank(maker, PathsIn("db")));
    }
    Write("schema.toml", BankSchema());
    const Said said = Run({"build", Path("schema.toml"), Path("db"), "--keep-data"});
    ASSERT_EQ(Line(said), "code=0 out=" + said.out);
  }

  std::vector<std::string> PathsIn(const std::string& folder) const {
    std::vector<std::string> paths;
    for (const char* name : {"/North.btr", "/South.btr", "/Ledger.btr", "/Numbers.btr"}) {
      paths.push_back(Path(folder) + name);
    }
    return paths;
  }
  void Copy(const std::string& name) const {
    ASSERT_EQ(Line(Run({"copy", Path("db"), Path(name)})),
              "code=0 out=" + name + ": 4 tables, 7 files\n");
    ExpectWholeTransactions(name);
  }
  void ExpectWholeTransactions(const std::string& folder) const {
    SCOPED_TRACE(folder);
    OtherProcess auditor;
    btrieve::test::BankState state;
    btrieve::test::BankPositions positions;
    ASSERT_TRUE(btrieve::test::OpenBank(auditor, PathsIn(folder)));
    EXPECT_EQ(btrieve::test::ReadBankEveryWay(auditor, state, positions), "");
    EXPECT_EQ(btrieve::test::AuditText(state), "");
    EXPECT_EQ(Run({"check", Path(folder)}).code, 0);
  }
};

TEST_F(Copies, HoldWholeTransactionsWhileOthersWork) {
  Branch one(1000, PathsIn("db")), two(1000000, PathsIn("db"));
  for (Branch* branch : {&one, &two}) branch->Hear();
  uint32_t steps = 0;
  for (uint32_t round = 0; round < 5; ++round) {
    for (Branch* branch : {&one, &two}) branch->Go({.seed = round, .steps = 80});
    Copy("copy" + std::to_string(round));
    for (Branch* branch : {&one, &two}) {
      const btrieve::test::Heard heard = branch->Hear();
      EXPECT_EQ(heard.fault, "");
      steps += heard.steps;
    }
  }
  EXPECT_GT(steps, 200u);
  ExpectWholeTransactions("db");
}

// What the dead have left over several files is settled in the copy as in the files.
TEST_F(Copies, SettleWhatTheDeadHaveLeft) {
  for (int round = 0; round < 4; ++round) {
    Branch branch(1000 + 1000000 * round, PathsIn("db"));
    branch.Hear();
    branch.Go({.seed = static_cast<uint32_t>(round), .steps = 200});
    std::this_thread::sleep_for(std::chrono::milliseconds(40 + 17 * round));
    branch.Kill();
    Copy("copy" + std::to_string(round));
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
