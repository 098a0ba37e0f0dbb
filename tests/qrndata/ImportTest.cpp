// What import takes, what it refuses and where it says so.
#include <algorithm>
#include <random>

#include "ToolFixture.h"

namespace qrndata::test {
namespace {

constexpr char kImportSchema[] = R"([[table]]
name = "T"
field = [
  { name = "Id", type = "Integer", size = 4 },
  { name = "Name", type = "String", size = 6 },
  { name = "Rate", type = "Decimal", size = 3, decimals = 2 },
  { name = "Born", type = "Date" },
  { name = "At", type = "Time" },
  { name = "Flag", type = "Logical" },
  { name = "Small", type = "Integer", size = 1 },
  { name = "Real", type = "Float", size = 4 },
  { name = "Cash", type = "Currency", decimals = 4 },
  { name = "Mark", type = "Bit" },
]
key = [
  { name = "ById", fields = ["Id"] },
  { name = "ByName", fields = ["Name"], duplicates = true, modifiable = true },
])";

class Importing : public ToolTest {
 protected:
  void SetUp() override { Build(kImportSchema); }
};

struct RefusedCase {
  const char* what;
  std::string csv;
  const char* said;  // after "in.csv:"
};

const RefusedCase kRefused[] = {
    {"a letter in a number", "Id,Name\n50,a\nx,b\n",
     "3:1: field \"Id\": expected a whole number from -2147483648 to 2147483647"},
    {"a number too large", "Name,Id\nb,2147483648\n",
     "2:3: field \"Id\": expected a whole number from -2147483648 to 2147483647"},
    {"one byte has no sign", "Id,Small\n1,-1\n",
     "2:3: field \"Small\": expected a whole number from 0 to 255"},
    {"blanks are no number", "Id,Small\n1,\" 1\"\n",
     "2:3: field \"Small\": expected a whole number from 0 to 255"},
    {"a text too long", "Id,Name\n1,1234567\n",
     "2:3: field \"Name\": the text has 7 bytes in code page 932; the field takes 6"},
    {"bytes count, not characters", "Id,Name\n1,日本語字\n",
     "2:3: field \"Name\": the text has 8 bytes in code page 932; the field takes 6"},
    {"columns count characters", "Name,Born\n日本,2023/02/32\n",
     "2:4: field \"Born\": expected a date such as 2024/01/31"},
    {"a character that does not fit", "Id,Name\n1,a한\n",
     "2:3: field \"Name\": code page 932 has no 한 (character 2 of the text)"},
    {"another encoding", "Id,Name\n1,\xC4\xB1\x90\xA0\n",
     "2:3: field \"Name\": not UTF-8: byte 0x90 (character 2 of the text); --encoding cp932 reads "
     "a "
     "file in code page 932"},
    {"digits too many before the point", "Id,Rate\n1,1000\n",
     "2:3: field \"Rate\": expected at most 3 digits before the point"},
    {"digits too many behind it", "Id,Rate\n1,0.001\n",
     "2:3: field \"Rate\": expected at most 2 decimals"},
    {"no number at all", "Id,Rate\n1,1.2.3\n",
     "2:3: field \"Rate\": expected a number such as -12.50"},
    {"a thirteenth month", "Id,Born\n1,2023/13/01\n",
     "2:3: field \"Born\": expected a date such as 2024/01/31"},
    {"a time past the day's end", "Id,At\n1,25:00:00\n",
     "2:3: field \"At\": expected a time such as 09:30:00"},
    {"no truth value", "Id,Flag\n1,yes\n", "2:3: field \"Flag\": expected 0, 1, true or false"},
    {"a real too large", "Id,Real\n1,1e39\n",
     "2:3: field \"Real\": the number is outside what Float of 4 bytes holds"},
    {"no finite real", "Id,Real\n1,nan\n",
     "2:3: field \"Real\": expected a number such as -12.5 or 1.5e-7"},
    {"an amount too large", "Id,Cash\n1,922337203685477.5808\n",
     "2:3: field \"Cash\": the number is too large"},
    {"two characters", "Id,Mark\n1,ab\n",
     "2:3: field \"Mark\": expected a single character of one byte"},
    {"a NUL", std::string("Id,Name\n1,a\0b\n", 14),
     "2:3: field \"Name\": the text holds a NUL character"},
    {"a cell too many", "Id,Name\n1,a,b\n", "2:1: expected 2 cells as in the first line, found 3"},
    {"a cell too few", "Id,Name\n1\n", "2:1: expected 2 cells as in the first line, found 1"},
    {"an open quote", "Id,Name\n1,\"a\n2,b\n", "2:3: this quote is never closed"},
    {"text behind a quote", "Id,Name\n1,\"a\"b\n",
     "2:6: expected a comma or the line's end behind the closing quote"},
    {"a quote inside", "Id,Name\n1,a\"b\n",
     "2:4: a quote inside a cell: put the whole cell in quotes and double this one"},
    {"lines in quotes count", "Id,Name\n60,\"a\nb\"\nx,c\n",
     "4:1: field \"Id\": expected a whole number from -2147483648 to 2147483647"},
    {"a key value twice", "Id,Name\n7,a\n7,b\n",
     "3:1: field \"Id\": key 0 \"ById\" takes no duplicates, and there is a record with this value "
     "already"},
};

TEST_F(Importing, RefusalsNameLineColumnAndWhatWasExpected) {
  for (const RefusedCase& row : kRefused) {
    const Said said = Import("T", row.csv);
    EXPECT_EQ(said.err, std::string("in.csv:") + row.said + "\n") << row.what;
    EXPECT_EQ(said.code, 1) << row.what;
  }
}

struct HeaderCase {
  std::string csv;
  const char* said;
};

TEST_F(Importing, AFirstLineThatCannotServeStopsIt) {
  const std::string all = "Id, Name, Rate, Born, At, Flag, Small, Real, Cash, Mark";
  const HeaderCase cases[] = {
      {"", "in.csv:1:1: expected a first line with the fields' names"},
      {"Id,Nam\n1,a\n",
       "in.csv:1:4: the table has no field \"Nam\"; did you mean \"Name\"?; expected one of "},
      {"Id,Price\n", "in.csv:1:4: the table has no field \"Price\"; expected one of "},
      {"Id,id\n", "in.csv:1:4: field \"Id\" has a column already"},
      {"Id,Name,Id\n", "in.csv:1:9: field \"Id\" has a column already"},
      {"Id,\"Name\n", "in.csv:1:4: this quote is never closed"},
      {"Id,\x96\xBC\n", "in.csv:1:4: not UTF-8: byte 0x96 (character 1 of the text); --encoding "},
      {std::string("\xFF\xFEI\0d\0\n\0"
                   "1\0\n\0",
                   12),
       "in.csv:1:1: the file is in UTF-16; expected "},
      {std::string("\xFE\xFF\0I\0d\0\n\0"
                   "1\0\n",
                   12),
       "in.csv:1:1: the file is in UTF-16; expected "},
      {std::string("I\0d\0\n\0"
                   "1\0\n\0",
                   10),
       "in.csv:1:1: the file is in UTF-16; expected "},
  };
  for (const HeaderCase& row : cases) {
    const Said said = Import("T", row.csv);
    EXPECT_EQ(said.code, 3) << row.csv;
    EXPECT_EQ(said.err.substr(0, 9 + std::string(row.said).size()),
              "qrndata: " + std::string(row.said))
        << row.csv;
  }
  EXPECT_EQ(Export("T", {"--format", "json"}), "[\n]\n") << "nothing was stored";
}

TEST_F(Importing, SoundRowsAreTakenAndTheOthersKept) {
  const Said said = Import("T", "Id,Name\r\n1,a\r\nx,b\r\n\r\n2,\"c\r\n\"\r\n1,d\r\n",
                           {"--refused", Path("refused.csv")});
  EXPECT_EQ(said.code, 1);
  EXPECT_EQ(said.out, "T: 2 rows taken, 2 refused\n");
  EXPECT_EQ(Read("refused.csv"), "Id,Name\nx,b\n1,d\n");
  EXPECT_EQ(Run({"show", Path("db")}).out,
            "id  table  file   fields  keys  records\n"
            " 4  T      T.btr      10     2        2\n");
}

struct BrokenCase {
  const char* what;
  std::string name;  // as a cell of a file in code page 932
  const char* said;  // after "in.csv:"
  const char* replaced;
  const char* skipped;
};

// clang-format off
const BrokenCase kBroken[] = {
    {"a lead byte at the end", "a\x81", "2:6: field \"Name\": not code page 932: byte 0x81 (character 2", "a?", "a"},
    {"a lead byte and a digit", "\x81" "1b", "2:6: field \"Name\": not code page 932: byte 0x81 (character 1", "?1b", "1b"},
    {"a second byte that is none", "\x93\xFA\x81-", "2:6: field \"Name\": not code page 932: byte 0x81 (character 2", "日?-", "日-"},
    {"a pair without a character", "\x85\x40" "c", "2:6: field \"Name\": not code page 932: byte 0x85 (character 1", "?@c", "@c"},
    {"a lead byte before a quote", "\"\x81\"", "2:6: field \"Name\": not code page 932: byte 0x81 (character 1", "?", ""},
};
// clang-format on

// The full-width digit before it makes the column one of characters.
TEST_F(Importing, BytesThatAreNoCharactersGoAsTold) {
  for (const BrokenCase& row : kBroken) {
    const std::string csv = "Mark,Born,Id,Name\n ,,1," + row.name + "\n,,2,\x93\xFA\x96\x7B\n";
    Build(kImportSchema);
    const Said refused = Import("T", csv, {"--encoding", "cp932", "--dry-run"});
    EXPECT_EQ(refused.code, 1) << row.what;
    EXPECT_EQ(refused.err.find(std::string("in.csv:") + row.said), 0u)
        << row.what << ": " << refused.err;
    const std::pair<const char*, const char*> choices[] = {{"replace", row.replaced},
                                                           {"skip", row.skipped}};
    for (const auto& [choice, stored] : choices) {
      Build(kImportSchema);
      const Said said = Import("T", csv, {"--encoding", "cp932", "--on-unmappable", choice});
      EXPECT_EQ(said.out.find("T: 2 rows taken, 1 text with characters "), 0u) << row.what;
      EXPECT_NE(Export("T").find(std::string("\n1,") + stored + ","), std::string::npos)
          << row.what << ": " << Export("T");
      EXPECT_NE(Export("T").find("\n2,日本,"), std::string::npos);
    }
  }
}

constexpr char kUniqueKeys[] = R"([[table]]
name = "T"
field = [
  { name = "Id", type = "AutoInc", size = 2 },
  { name = "A", type = "String", size = 1 },
  { name = "B", type = "Integer", size = 1 },
  { name = "C", type = "String", size = 2 },
]
key = [
  { fields = ["Id"] },
  { fields = ["A", { field = "B", descending = true }] },
  { fields = ["C"], case_insensitive = true, null = "any", null_value = 32 },
  { fields = ["B"], duplicates = true },
])";

// With stored records, given numbers, keys of segments, without case, and that leave records out.
TEST_F(Importing, ADryRunRefusesWhatAnImportRefuses) {
  Build(kUniqueKeys);
  ASSERT_EQ(Import("T", "Id,A,B,C\n5,a,1,xx\n").code, 0);
  std::mt19937 random(7);
  const auto oneOf = [&](std::string_view letters) { return letters[random() % letters.size()]; };
  std::string csv = "Id,A,B,C\n";
  for (int row = 0; row < 200; ++row) {
    csv += random() % 3 == 0 ? std::to_string(random() % 100) : "0";
    csv.append(",")
        .append(1, oneOf("abcdeABCDE"))
        .append(",")
        .append(std::to_string(random() % 20));
    csv.append(",").append(1, oneOf("xyzXYZ ")).append(1, oneOf("pqrstuPQRSTU ")).append("\n");
  }
  csv += "32767,z,1,\n0,z,2,\n";
  const Said tried = Import("T", csv, {"--dry-run", "--refused", Path("dry.csv")});
  const Said done = Import("T", csv, {"--refused", Path("done.csv")});
  EXPECT_EQ(done.out, "T: 29 rows taken, 173 refused\n");
  EXPECT_EQ(tried.out, "T: 29 rows could be taken, 173 refused\n");
  EXPECT_EQ(Read("dry.csv"), Read("done.csv"));
}

TEST_F(Importing, FilesAndTablesThatAreNotThereAreNamed) {
  EXPECT_EQ(Line(Run({"import", Path("db"), "T", Path("none.csv")})),
            "code=4 err=qrndata: none.csv: cannot be read\n");
  EXPECT_EQ(Line(Import("U", "Id\n")),
            "code=3 err=qrndata: db: there is no table \"U\"; there are: T\n");
  Write("nodb", "");
  EXPECT_EQ(Run({"import", Path("nowhere"), "T", Path("in.csv")}).code, 4);
  std::filesystem::remove(Folder() / "db" / "T.btr");
  const Said said = Import("T", "Id\n1\n");
  EXPECT_EQ(said.code, 4);
  EXPECT_NE(said.err.find("T.btr: status 12 (file not found)"), std::string::npos) << said.err;
}

}  // namespace
}  // namespace qrndata::test
