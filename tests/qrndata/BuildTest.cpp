// Building and showing: what a dictionary holds byte for byte, and what happens to files that are
// there already.
#include "ToolFixture.h"
#include "tools/qrndata/BtrFile.h"

namespace qrndata::test {
namespace {

class Building : public ToolTest {
 protected:
  // The user's own records of a dictionary file, in hexadecimal.
  std::string UserRows(const char* file, size_t tableIdAt) {
    BtrFile rows(Folder() / "db" / file, Access::ReadOnly);
    std::string text;
    Bytes row;
    for (Status status = rows.StepFirst(row); status == 0; status = rows.StepNext(row)) {
      if (row[tableIdAt] >= 4) text += Hex(row) + "\n";
    }
    return text;
  }

  static std::string Hex(const Bytes& bytes) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const uint8_t byte : bytes) {
      text.push_back(kDigits[byte >> 4]);
      text.push_back(kDigits[byte & 15]);
    }
    return text;
  }

  static std::string Blanks(size_t count) {
    std::string text;
    while (count-- > 0) text += "20";
    return text;
  }
};

constexpr char kItems[] = R"([[table]]
name = "Items"
field = [
  { name = "No", type = "Integer", size = 2 },
  { name = "Note", type = "String", size = 3, nullable = true },
]
key = [ { name = "ByNo", fields = ["No"], duplicates = true } ])";

// The worked example of docs/dictionary-files.md.
TEST_F(Building, ADictionaryIsWrittenByteForByte) {
  Build(kItems);
  EXPECT_EQ(UserRows("file.ddf", 0), "04004974656D73" + Blanks(15) + "4974656D732E627472" +
                                         Blanks(55) + "40" + Blanks(10) + "\n");
  EXPECT_EQ(UserRows("field.ddf", 2), "130004004E6F" + Blanks(18) + "0100000200000000\n" +
                                          "140004004E6F7465" + Blanks(16) + "0003000300000400\n" +
                                          "1500040042794E6F" + Blanks(16) + "FF00000000000000\n");
  EXPECT_EQ(UserRows("index.ddf", 0), "04001300000000008101\n");
  ASSERT_EQ(Import("Items", "No,Note\n7,ab\n7,\n").code, 0);
  EXPECT_EQ(UserRows("Items.btr", 0), "070000616220\n070001202020\n");
}

TEST_F(Building, WhatIsThereIsOnlyReplacedWhenAsked) {
  Build(kItems);
  ASSERT_EQ(Import("Items", "No\n1\n2\n").code, 0);
  const std::string schema = Path("schema.toml"), db = Path("db");
  const Said refused = Run({"build", schema, db});
  EXPECT_EQ(refused.code, 4);
  EXPECT_NE(refused.err.find("file.ddf: exists already; --replace"), std::string::npos);
  EXPECT_EQ(Export("Items"), "No,Note\n1,\n2,\n");
  EXPECT_EQ(Run({"build", schema, db, "--keep-data"}).code, 0);
  EXPECT_EQ(Export("Items"), "No,Note\n1,\n2,\n");
  EXPECT_EQ(Run({"build", schema, db, "--replace"}).code, 0);
  EXPECT_EQ(Export("Items"), "No,Note\n");
  EXPECT_EQ(Run({"build", schema, db, "--replace", "--keep-data"}).code, 2);
}

TEST_F(Building, ATableIsShownWithItsFile) {
  Build(kItems);
  ASSERT_EQ(Import("Items", "No\n1\n1\n2\n").code, 0);
  const std::string file =
      "3 records of 6 bytes, pages of 4096, flags 130, 1 keys\n"
      "key  offset  length  type     flags  null  unique values\n"
      "  0       0       2  Integer    257     0              2\n";
  const std::string shown = Run({"show", Path("db"), "Items"}).out;
  EXPECT_EQ(shown.substr(0, shown.find("file ")),
            "table Items (id 4, records of 6 bytes)\n"
            "id  field  type     offset  size  decimals  null\n"
            "19  No     Integer       0     2\n"
            "20  Note   String        3     3            yes\n"
            "\n"
            "key  name  field  flags\n"
            "  0  ByNo  No     duplicates\n"
            "\n");
  EXPECT_TRUE(shown.ends_with(file)) << shown;
  EXPECT_TRUE(Run({"show", Path("db/Items.btr")}).out.ends_with(file));
}

}  // namespace
}  // namespace qrndata::test
