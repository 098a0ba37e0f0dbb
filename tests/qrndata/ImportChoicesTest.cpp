// Which columns and rows of a file an import takes, into which records, and where it stops.
#include <algorithm>
#include <csignal>
#include <random>
#include <sstream>

#include "ToolFixture.h"
#include "platform/BtrCall.h"
#include "tests/support/Setting.h"

namespace qrndata::test {
namespace {

constexpr char kPeople[] = R"([[table]]
name = "People"
field = [
  { name = "Id", type = "Integer" },
  { name = "First Name", type = "String", size = 6 },
  { name = "Age", type = "NumericSTS", size = 4 },
  { name = "Sum", type = "Numeric", size = 3, nullable = true },
  { name = "Memo", type = "Note", size = 200 },
]
key = [
  { name = "ById", fields = ["Id"] },
  { name = "ByName", fields = ["First Name"], modifiable = true, null = "all", null_value = 32 },
  { name = "ByAge", fields = ["Age"], duplicates = true, modifiable = true },
])";

class ImportChoices : public ToolTest {
 protected:
  void SetUp() override { Build(kPeople); }

  std::string People() const { return Export("People", {"--key", "byid"}); }
};

const std::string kAll = "Id,First Name,Age,Sum,Memo\n";

struct ColumnCase {
  const char* what;
  std::string csv;
  std::vector<std::string> options;
  const char* stored;  // behind the names
};

const ColumnCase kColumns[] = {
    {"names without case and blanks", "firstname,ID\nAbe,1\n", {}, "1,Abe,0,,\n"},
    {"names with wide blanks", "First\xE3\x80\x80Name,Id\nAbe,1\n", {}, "1,Abe,0,,\n"},
    {"a column of another name",
     "No.,Who\n1,Abe\n",
     {"--columns", "No.=Id,Who=firstname"},
     "1,Abe,0,,\n"},
    {"columns that are left out",
     "x,Id,\"a,b\",First Name\nq,1,r,Abe\n",
     {"--columns", "X=,\"a,b=\""},
     "1,Abe,0,,\n"},
    {"no names", "1,Abe,7,,m\n2,Ito,8,5,n\n", {"--no-header"}, "1,Abe,7,,m\n2,Ito,8,5,n\n"},
    {"no names, in another order",
     "Abe,x,1\n",
     {"--no-header", "--columns", "First Name,,Id"},
     "1,Abe,0,,\n"},
    {"tabs", "Id\tMemo\n1\ta,b\n", {"--delimiter", "tab"}, "1,,0,,\"a,b\"\n"},
    {"a delimiter in quotes", "Id;Memo\n1;\"a;b\"\n", {"--delimiter", ";"}, "1,,0,,a;b\n"},
    {"a delimiter that is half of a character",
     "Id|First Name\n1|\x83|\x83|\n",
     {"--delimiter", "|", "--encoding", "cp932"},
     "1,ポポ,0,,\n"},
    {"from a line on", "Id,Memo\n1,\"a\nb\"\n2,c\n3,d\n", {"--first", "4"}, "2,,0,,c\n3,,0,,d\n"},
    {"up to a line", "Id\n1\n2\n3\n", {"--first", "3", "--last", "3"}, "2,,0,,\n"},
};

TEST_F(ImportChoices, ColumnsGoWhereTheyAreTold) {
  for (const ColumnCase& row : kColumns) {
    SetUp();
    const Said said = Import("people", row.csv, row.options);
    EXPECT_EQ(said.code, 0) << row.what << ": " << said.err;
    EXPECT_EQ(People(), kAll + row.stored) << row.what;
  }
}

struct ChoiceFault {
  std::string csv;
  std::vector<std::string> options;
  int code;
  const char* said;
};

const ChoiceFault kChoiceFaults[] = {
    {"Id\n1\n", {"--columns", "Num=Id"}, 3, "in.csv:1:1: there is no column \"Num\""},
    {"Id,A\n1,2\n",
     {"--columns", "A=Agge"},
     3,
     "in.csv:1:4: the table has no field \"Agge\"; did you mean \"Age\"?"},
    {"Id,A\n1,2\n", {"--columns", "A=Id"}, 3, "in.csv:1:4: field \"Id\" has a column already"},
    {"Id\n1\n", {"--columns", "Id"}, 2, "--columns: \"Id\": expected CSV name=Field"},
    {"Id\n1\n", {"--columns", "\"Id=Id"}, 2, "--columns: this quote is never closed"},
    {"1\n",
     {"--no-header", "--columns", "x=Id"},
     2,
     "--columns: \"x=Id\": expected a field's name"},
    {"1\n", {"--no-header"}, 1, "in.csv:1:1: expected 5 cells, found 1"},
    {"Id\n1\n", {"--delimiter", "ab"}, 2, "expected one character of ASCII"},
    {"Id\n1\n", {"--delimiter", "\""}, 2, "expected one character of ASCII"},
    {"Id\n1\n", {"--update", "ByName"}, 3, "no column for field \"First Name\""},
    {"Id,Age\n1,2\n", {"--update", "ByAge"}, 3, "key \"ByAge\" allows duplicates"},
    {"Id\n1\n", {"--update", "ByIdd"}, 3, "has no key \"ByIdd\"; did you mean \"ById\"?"},
    {"Id\n1\n", {"--update", "ById", "--replace", "ById"}, 2, "excludes"},
    {"Id\n1\n", {"--max-errors", "0"}, 2, "--max-errors"},
};

TEST_F(ImportChoices, WhatCannotBeMeantIsTold) {
  for (const ChoiceFault& row : kChoiceFaults) {
    const Said said = Import("People", row.csv, row.options);
    EXPECT_EQ(said.code, row.code) << row.said << ": " << said.err;
    EXPECT_NE(said.err.find(row.said), std::string::npos) << said.err;
  }
  EXPECT_EQ(People(), kAll);
}

// What the row has no column for stays, byte by byte: the field behind a display number, too.
TEST_F(ImportChoices, RecordsAreChangedByAKey) {
  ASSERT_EQ(Import("People", "Id,First Name,Age,Sum,Memo\n1,Abe,-7,5,one\n2,Ito,8,,two\n").code, 0);
  const Said updated =
      Import("People", "Age,Id,First Name\n-9,1,Abe\n3,7,Sue\n8,1,Ito\n", {"--update", "ById"});
  EXPECT_EQ(updated.out, "People: 1 row taken (1 changed, 0 new), 2 refused\n");
  EXPECT_EQ(updated.err,
            "in.csv:3:1: there is no record with this key value\n"
            "in.csv:4:5: field \"First Name\": key 1 \"ByName\" takes no duplicates, and there is "
            "a record with this value already\n");
  EXPECT_EQ(Line(Import("People", "Id,Memo,Sum\n2,\"\",6\n", {"--update", "Id"})),
            "code=0 out=People: 1 row taken (1 changed, 0 new)\n");
  EXPECT_EQ(People(), kAll + "1,Abe,-9,5,one\n2,Ito,8,6,\n");
  EXPECT_EQ(Line(Import("People", "Id,Age\n2,1\n3,2\n", {"--replace", "0"})),
            "code=0 out=People: 2 rows taken (1 changed, 1 new)\n");
  EXPECT_EQ(People(), kAll + "1,Abe,-9,5,one\n2,,1,,\n3,,2,,\n");
  EXPECT_EQ(Check().code, 0);
}

std::string RandomRows(std::mt19937& random, int count) {
  const auto below = [&random](int end) { return static_cast<int>(random() % end); };
  const char* const kNames[] = {"Abe", "Ito", "Sue", "Ken", "Ui", "Abe ", "\"\"", ""};
  std::string csv = "Id,First Name,Age\n";
  for (int row = 0; row < count; ++row) {
    csv +=
        std::to_string(below(12)) + "," + kNames[below(8)] + "," + std::to_string(below(99)) + "\n";
  }
  return csv;
}

// A dry run says of each row what the run that stores comes to.
TEST_F(ImportChoices, ADryRunOfChangesRefusesTheSameRows) {
  const int seed = qrn::test::Seed();
  SCOPED_TRACE(seed);
  std::mt19937 random(static_cast<unsigned>(seed));
  uint64_t refused = 0;
  for (int round = 0; round < 12; ++round) {
    SetUp();
    ASSERT_LE(Import("People", RandomRows(random, 6)).code, 1);
    const std::string before = People(), csv = RandomRows(random, 25);
    for (const char* key : {"ById", "ByName"}) {
      const std::string how = random() % 2 == 0 ? "--update" : "--replace";
      const Said dry = Import("People", csv, {how, key, "--dry-run"});
      const bool isFirst = key == std::string("ById");
      EXPECT_TRUE(!isFirst || People() == before);
      Said said = Import("People", csv, {how, key});
      const std::string rest = " taken (";
      said.out.replace(said.out.find(rest), rest.size(), " could be taken (");
      EXPECT_EQ(Line(dry), Line(said)) << how << ' ' << key << '\n' << before << csv;
      refused += static_cast<uint64_t>(std::ranges::count(said.err, '\n'));
    }
  }
  EXPECT_GT(refused, 50U);
}

// As a shell's pipe that goes quiet when its reader is told to stop.
class InterruptedInput : public std::streambuf {
 public:
  explicit InterruptedInput(std::string text) : text_(std::move(text)) {}

 protected:
  int_type underflow() override {
    if (isRead_) std::raise(SIGINT);
    if (isRead_) text_ = "9999\n";
    isRead_ = true;
    setg(text_.data(), text_.data(), text_.data() + text_.size());
    return traits_type::to_int_type(text_[0]);
  }

 private:
  std::string text_;
  bool isRead_ = false;
};

TEST_F(ImportChoices, AnInterruptedImportSaysWhereToGoOn) {
  InterruptedInput input("Id\n1\n2\n3\n");
  std::istream stream(&input);
  SetInput(stream);
  EXPECT_EQ(Line(Run({"import", Path("db"), "People", "-"})),
            "code=130 err=qrndata: interrupted; stopped before line 6 of standard input; stored "
            "until there: 4 rows; --first 6 goes on\n");
}

// After the second block nothing more is taken, as on a full disk, or only as a small block.
struct Manager {
  int calls = 0, good = 0;
  uint32_t most = 0;  // bytes of a block
};
Manager manager;

int16_t BTR_CALL LimitedInserts(uint16_t operation, void* posBlock, void* data, uint32_t* length,
                                void* key, uint8_t keyLength, int8_t keyNumber) {
  constexpr uint16_t kInsertMany = 40, kInsertOne = 2;
  if (operation == kInsertMany && *length > manager.most) return 22;
  const bool isInsert = operation == kInsertMany || operation == kInsertOne;
  if (isInsert && ++manager.calls > manager.good) return 18;
  qrn::ReplaceBtrCall(nullptr);
  const int16_t status = qrn::BtrCall(operation, posBlock, data, length, key, keyLength, keyNumber);
  qrn::ReplaceBtrCall(&LimitedInserts);
  return status;
}

std::string Ids(int count) {
  std::string csv = "Id,Memo\n";
  for (int id = 1; id <= count; ++id) csv += std::to_string(id) + "," + std::string(60, 'm') + "\n";
  return csv;
}

TEST_F(ImportChoices, AStoppedImportGoesOnWithTheLineItNames) {
  manager = {0, 2, 100000};
  qrn::ReplaceBtrCall(&LimitedInserts);
  const Said stopped = Import("People", Ids(25), {"--batch", "10"});
  qrn::ReplaceBtrCall(nullptr);
  EXPECT_EQ(
      Line(stopped),
      "code=4 err=qrndata: table \"People\": status 18 (disk full); stopped before line 22 of "
      "in.csv; stored until there: 20 rows; --first 22 goes on\n");
  EXPECT_EQ(Line(Import("People", Ids(25), {"--first", "22"})),
            "code=0 out=People: 5 rows taken\n");
  EXPECT_EQ(Line(Check()), "code=0 out=1 table, 25 records: no faults\n");
}

TEST_F(ImportChoices, AManagerOfSmallBlocksGetsThose) {
  manager = {0, 1000, 60000};
  qrn::ReplaceBtrCall(&LimitedInserts);
  const Said said = Import("People", Ids(3000));
  qrn::ReplaceBtrCall(nullptr);
  EXPECT_EQ(Line(said), "code=0 out=People: 3,000 rows taken\n");
  EXPECT_EQ(Line(Check()), "code=0 out=1 table, 3,000 records: no faults\n");
}

// Refused by their form and by their key alike; those before the last one are stored.
TEST_F(ImportChoices, SoManyErrorsStopIt) {
  const std::string csv = "Id\n1\nx\n2\n1\n3\n2\n4\n";
  EXPECT_EQ(Line(Import("People", csv, {"--max-errors", "3", "--refused", Path("r.csv")})),
            "code=3 err=in.csv:3:1: field \"Id\": expected a whole number from -2147483648 to "
            "2147483647\n"
            "in.csv:5:1: field \"Id\": key 0 \"ById\" takes no duplicates, and there is a record "
            "with this value already\n"
            "in.csv:7:1: field \"Id\": key 0 \"ById\" takes no duplicates, and there is a record "
            "with this value already\n"
            "qrndata: 3 rows refused, which --max-errors does not let pass; stopped before line 8 "
            "of in.csv; stored until there: 3 rows; --first 8 goes on\n");
  EXPECT_EQ(Read("r.csv"), "Id\nx\n1\n2\n");
  EXPECT_EQ(People(), kAll + "1,,0,,\n2,,0,,\n3,,0,,\n");
}

// A quote that is never closed takes no more than a row's most bytes.
TEST_F(ImportChoices, AnEndlessRowIsRefusedAlone) {
  const std::string csv = "Id,Memo\n1,a\n2,\"" + std::string(1u << 20, 'm') + "\n3,c\n4," +
                          std::string(3u << 20, 'm') + "\n5,e\n";
  const Said said = Import("People", csv);
  EXPECT_EQ(said.out, "People: 3 rows taken, 2 refused\n");
  EXPECT_EQ(said.err,
            "in.csv:3:3: the row is longer than 1,048,576 bytes; is a quote never closed?\n"
            "in.csv:5:3: the row is longer than 1,048,576 bytes; is a quote never closed?\n");
}

}  // namespace
}  // namespace qrndata::test
