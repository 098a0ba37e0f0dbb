// Which records and fields an export takes, and what other programs find in its files.
#include <sqlite3.h>

#include <algorithm>

#include "ToolFixture.h"
#include "ZipEntry.h"
#include "btrieve.h"
#include "platform/BtrCall.h"
#include "tools/qrndata/BtrFile.h"

namespace qrndata::test {
namespace {

namespace fs = std::filesystem;

constexpr char kShop[] = R"([[table]]
name = "Orders"
field = [
  { name = "Id", type = "Integer" },
  { name = "First Name", type = "String", size = 8 },
  { name = "Total", type = "Decimal", size = 6, decimals = 2 },
  { name = "Large", type = "Decimal", size = 12, decimals = 1 },
  { name = "Day", type = "Date" },
  { name = "At", type = "Time" },
  { name = "Rate", type = "Float" },
  { name = "Paid", type = "Logical" },
  { name = "Count", type = "NumericSTS", size = 5, nullable = true },
  { name = "Memo", type = "Blob" },
]
key = [
  { name = "ByDay", fields = ["Day", { field = "Id", descending = true }], duplicates = true },
  { name = "ById", fields = ["Id"] },
  { name = "ByName", fields = ["First Name"], case_insensitive = true },
]
[[table]]
name = "A/b*"
field = [ { name = "Id", type = "Integer" } ]
[[table]]
name = "a_b_"
field = [ { name = "Id", type = "Integer" } ])";

constexpr char kOrderRows[] =
    "Id,First Name,Total,Large,Day,At,Rate,Paid,Count,Memo\n"
    "1,Abe,1200.50,12345678901234567890.5,2024/02/29,09:30:00.25,0.1,1,,\"a\"\"b\n\"\n"
    "2,\"Ito \"\"B\"\"\",-3,7,2023/02/29,24:00:00,1e300,0,-5,\n"
    "3,漢字,0,0,,,0,0,0,\n";

class Exports : public ToolTest {
 protected:
  void SetUp() override {
    Build(kShop);
    const Said said = Import("Orders", kOrderRows);
    ASSERT_EQ(said.code, 0) << said.err;
  }

  Said ExportTo(const std::string& output, const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments = {"export", Path("db"), "-o", Path(output)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Run(arguments);
  }

  // The rows of a query, cells parted by |, rows by ;.
  std::string Query(const std::string& file, const std::string& sql) const {
    sqlite3* database = nullptr;
    sqlite3_initialize();
    EXPECT_EQ(sqlite3_open_v2(Path(file).c_str(), &database, SQLITE_OPEN_READONLY, nullptr), 0);
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr), 0)
        << sqlite3_errmsg(database);
    std::string rows;
    while (sqlite3_step(statement) == SQLITE_ROW) {
      for (int column = 0; column < sqlite3_column_count(statement); ++column) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        rows.append(column == 0 ? "" : "|").append(text == nullptr ? "NULL" : text);
      }
      rows += ';';
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return rows;
  }

  std::string Sheet(const std::string& file, int number) const {
    return ZipEntry(Read(file), "xl/worksheets/sheet" + std::to_string(number) + ".xml");
  }
};

struct WhereCase {
  const char* where;
  const char* ids;  // or the message
};

TEST_F(Exports, TakeTheRecordsThatMeetACondition) {
  const WhereCase kCases[] = {
      {"@Id >= 2", "Id\n2\n3\n"},
      {"@Total >= 0 & @Id < 3", "Id\n1\n"},
      {"@1 = 漢字 | @Day = 2024/02/29", "Id\n1\n3\n"},
      {"@1 = 'Ito \"B\"'", "Id\n2\n"},
      {"@0 = 9", "Id\n"},
      {"  ", "code=2 err=qrndata: --where:3: expected @ and a field's name or number\n"},
      {"Id > 2", "code=2 err=qrndata: --where:1: expected @ and a field's name or number\n"},
      {"@1 = 漢字 & @Ttal > 1",
       "code=2 err=qrndata: --where:11: the table has no field \"Ttal\" (a name goes up to the "
       "next "
       "blank); did you mean \"Total\"?\n"},
      {"@Id>2",
       "code=2 err=qrndata: --where:1: the table has no field \"Id>2\" (a name goes up to the next "
       "blank); did you mean \"Id\"?\n"},
      {"@10 = 1",
       "code=2 err=qrndata: --where:1: the table has no field of this number; the first one is "
       "@0\n"},
      {"@Id ! 2", "code=2 err=qrndata: --where:5: expected one of = <> > >= < <= behind a blank\n"},
      {"@Id = & @Id = 2", "code=2 err=qrndata: --where:7: expected a value\n"},
      {"@Id = 2 and @Id = 3",
       "code=2 err=qrndata: --where:9: expected & or | and another term, or the condition's end\n"},
      {"@Id =",
       "code=2 err=qrndata: --where:1: a term has no value, or a field that has no order\n"},
      {"@1 = ☃", "code=2 err=qrndata: --where:6: code page 932 has no ☃\n"},
  };
  for (const WhereCase& row : kCases) {
    EXPECT_EQ(Export("Orders", {"--fields", "Id", "--where", row.where}), row.ids) << row.where;
  }
}

TEST_F(Exports, PutSeveralTablesIntoAFolder) {
  EXPECT_EQ(Line(ExportTo("out", {"--format", "jsonl"})),
            "code=0 out=Orders: 3 rows\nA/b*: 0 rows\na_b_: 0 rows\n");
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(Folder() / "out")) {
    names.push_back(entry.path().filename().string());
  }
  std::ranges::sort(names);
  EXPECT_EQ(names, (std::vector<std::string>{"A_b_.jsonl", "Orders.jsonl", "a_b__6.jsonl"}));
  EXPECT_EQ(Line(ExportTo("out", {"Orders", "--fields", "Id"})), "code=0 out=Orders: 3 rows\n");
  EXPECT_EQ(Read("out/Orders.csv"), "Id\n1\n2\n3\n");
  EXPECT_EQ(Run({"export", Path("db"), "Orders", "-o", "-", "--fields", "Id"}).out,
            "Id\n1\n2\n3\n");
  Write("db/A_b_.btr", "no data file");
  Write("db/table5.btr", "no data file");
  EXPECT_EQ(ExportTo("new", {"--format", "json"}).code, 4);
  EXPECT_FALSE(fs::exists(Folder() / "new"));
}

struct MisuseCase {
  std::vector<std::string> arguments;  // behind DIR
  const char* said;
};

TEST_F(Exports, AreRefusedWhereTheyHaveNoPlace) {
  const MisuseCase kCases[] = {
      {{}, "several tables go into a folder: --output names it"},
      {{"Orders", "a_b_", "--key", "0", "-o", "x"},
       "--fields, --where and --key go with one table; there are 2"},
      {{"Orders", "--format", "xlsx"}, "this format goes into a file: --output names it"},
      {{"Orders", "--format", "sqlite", "-o", "-"},
       "this format goes into a file: --output names it"},
      {{"Orders", "--format", "sqlite", "-o", "x", "--encoding", "cp932"},
       "--encoding goes with csv, json and jsonl"},
      {{"Orders", "--format", "xlsx", "-o", Path("db/Orders.btr")},
       "db/Orders.btr: this is the data file of table \"Orders\"; name another file"},
  };
  for (const MisuseCase& row : kCases) {
    std::vector<std::string> arguments = {"export", Path("db")};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    std::string said = Line(Run(arguments));
    std::ranges::replace(said, '\\', '/');
    EXPECT_EQ(said, std::string("code=2 err=qrndata: ") + row.said + "\n");
  }
}

TEST_F(Exports, MakeADatabaseWithTypesAndKeys) {
  Write("shop.db", "former");
  EXPECT_EQ(Line(ExportTo("shop.db", {"--format", "sqlite"})),
            "code=0 out=Orders: 3 rows\nA/b*: 0 rows\na_b_: 0 rows\n");
  EXPECT_EQ(Query("shop.db", "SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL"),
            "CREATE TABLE \"Orders\"(\"Id\" INTEGER, \"First Name\" TEXT, \"Total\" "
            "DECIMAL(11,2), \"Large\", \"Day\" TEXT, \"At\" TEXT, \"Rate\" REAL, \"Paid\" INTEGER, "
            "\"Count\" INTEGER, \"Memo\" TEXT, PRIMARY KEY(\"Id\"));"
            "CREATE INDEX \"Orders_ByDay\" ON \"Orders\"(\"Day\", \"Id\" DESC);"
            "CREATE UNIQUE INDEX \"Orders_ByName\" ON \"Orders\"(\"First Name\" COLLATE NOCASE);"
            "CREATE TABLE \"A/b*\"(\"Id\" INTEGER);"
            "CREATE TABLE \"a_b_\"(\"Id\" INTEGER);");
  EXPECT_EQ(Query("shop.db", "SELECT * FROM Orders"),
            "1|Abe|1200.5|12345678901234567890.5|2024-02-29|09:30:00.25|0.1|1|NULL|a\"b\n;"
            "2|Ito \"B\"|-3|7|2023-02-29|24:00:00|1.0e+300|0|-5|;"
            "3|漢字|0|0|NULL|NULL|0.0|0|0|;");
  EXPECT_EQ(Query("shop.db",
                  "SELECT typeof(Total), typeof(Large), typeof(Count), typeof(Rate) FROM Orders"),
            "real|text|null|real;integer|integer|integer|real;integer|integer|integer|real;");
  EXPECT_EQ(Query("shop.db", "SELECT sum(Total) FROM Orders WHERE Total > -5"), "1197.5;");
  EXPECT_EQ(Query("shop.db", "PRAGMA integrity_check"), "ok;");
}

constexpr char kPairs[] = R"([[table]]
name = "T"
field = [
  { name = "A", type = "String", size = 2 },
  { name = "B", type = "String", size = 2 },
]
key = [ { fields = ["A"] }, { name = "ByB", fields = ["B"] } ])";

// Two values for the record manager, one text for every other program.
TEST_F(Exports, TellOfValuesThatADatabaseTakesForOne) {
  Build(kPairs);
  for (const char* bytes : {"a x ", "a\0y ", "b q ", "c q\0"}) {
    Bytes record(bytes, bytes + 4);
    ASSERT_EQ(BtrFile(Folder() / "db" / "T.btr", Access::ReadWrite).Insert(record), 0);
  }
  EXPECT_EQ(Line(ExportTo("t.db", {"--format", "sqlite"})),
            "code=1 out=T: 3 rows\n err=record at position 2: the primary key has these values "
            "already\n"
            "warning: table \"T\": key \"ByB\" is not unique in the database: UNIQUE constraint "
            "failed: T.B\n"
            "1 record left out\n");
  EXPECT_EQ(Query("t.db", "SELECT * FROM T"), "a|x;b|q;c|q;");
  EXPECT_EQ(Query("t.db", "SELECT sql FROM sqlite_schema WHERE type = 'index' AND sql <> ''"),
            "CREATE INDEX \"T_ByB\" ON \"T\"(\"B\");");
}

// In the sheet: numbers as numbers, what fits no number or moment as it reads.
constexpr const char* kSheetParts[] = {
    "<pane ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" state=\"frozen\"/>",
    "<c r=\"B1\" s=\"1\" t=\"inlineStr\"><is><t>First Name</t></is></c>",
    "<c r=\"A2\"><v>1</v></c>",
    "<c r=\"C2\" s=\"2\"><v>1200.5</v></c>",
    "<c r=\"D2\" t=\"inlineStr\"><is><t>12345678901234567890.5</t></is></c>",
    "<c r=\"E2\" s=\"3\"><v>45351</v></c><c r=\"F2\" s=\"4\"><v>0.3958362268518518</v></c>",
    "<c r=\"G2\"><v>0.1</v></c><c r=\"H2\" t=\"b\"><v>1</v></c><c r=\"J2\" ",
    "<t xml:space=\"preserve\">a\"b\n</t>",
    "<c r=\"E3\" t=\"inlineStr\"><is><t>2023/02/29</t></is></c>",
    "<c r=\"F3\" t=\"inlineStr\"><is><t>24:00:00</t></is></c>",
    "<c r=\"B4\" t=\"inlineStr\"><is><t>漢字</t></is></c>",
    "<c r=\"D4\" s=\"5\"><v>0</v></c><c r=\"G4\"><v>0</v></c>",
};
constexpr const char* kStyleParts[] = {
    "<numFmt numFmtId=\"164\" formatCode=\"0.00\"/>"
    "<numFmt numFmtId=\"165\" formatCode=\"yyyy/mm/dd\"/>"
    "<numFmt numFmtId=\"166\" formatCode=\"hh:mm:ss.00\"/>",
    "<font><b/>",
    // The names' own, two decimals, a date.
    "<xf numFmtId=\"0\" fontId=\"1\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyFont=\"1\"/>"
    "<xf numFmtId=\"164\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
    "applyNumberFormat=\"1\"/><xf numFmtId=\"165\" ",
};

TEST_F(Exports, MakeAWorkbook) {
  EXPECT_EQ(Line(ExportTo("shop.xlsx", {"--format", "xlsx"})),
            "code=0 out=Orders: 3 rows\nA/b*: 0 rows\na_b_: 0 rows\n");
  const std::string sheet = Sheet("shop.xlsx", 1), book = Read("shop.xlsx");
  for (const char* part : kSheetParts) EXPECT_NE(sheet.find(part), sheet.npos) << part << sheet;
  const std::string styles = ZipEntry(book, "xl/styles.xml");
  for (const char* part : kStyleParts) EXPECT_NE(styles.find(part), styles.npos) << part << styles;
  const std::string sheets = ZipEntry(book, "xl/workbook.xml");
  EXPECT_NE(sheets.find("<sheet name=\"Orders\" sheetId=\"1\" r:id=\"rId1\"/>"
                        "<sheet name=\"A_b_\" sheetId=\"2\" r:id=\"rId2\"/>"
                        "<sheet name=\"a_b__6\" sheetId=\"3\" r:id=\"rId3\"/>"),
            sheets.npos)
      << sheets;
}

// The file says that it has more records than a sheet has rows.
int16_t BTR_CALL ManyRecords(uint16_t operation, void* posBlock, void* data, uint32_t* length,
                             void* key, uint8_t keyLength, int8_t keyNumber) {
  qrn::ReplaceBtrCall(nullptr);
  const int16_t status = qrn::BtrCall(operation, posBlock, data, length, key, keyLength, keyNumber);
  qrn::ReplaceBtrCall(&ManyRecords);
  if (operation == BtrOpStat) static_cast<BtrFileSpec*>(data)->recordCount = 1048576;
  return status;
}

TEST_F(Exports, KnowBeforeTheyWriteThatASheetIsTooSmall) {
  qrn::ReplaceBtrCall(&ManyRecords);
  const Said said = ExportTo("shop.xlsx", {"Orders", "--format", "xlsx"});
  const Said chosen = ExportTo("shop.xlsx", {"Orders", "--format", "xlsx", "--where", "@Id = 2"});
  qrn::ReplaceBtrCall(nullptr);
  EXPECT_EQ(Line(said),
            "code=3 err=qrndata: table \"Orders\": 1,048,576 records; a sheet has room for "
            "1,048,575 below the names\n");
  EXPECT_EQ(Line(chosen), "code=0 out=Orders: 1 row\n");
}

}  // namespace
}  // namespace qrndata::test
