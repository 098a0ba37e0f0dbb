// What programs may have stored, as bytes: exported, and imported again from what was written.
#include <sstream>

#include "ToolFixture.h"
#include "tools/qrndata/BtrFile.h"

namespace qrndata::test {
namespace {

struct Shape {
  const char* type;
  int size;
  int decimals;
};

// Table "T" of one field for the bytes, and "U" of the same field for what import makes of them.
std::string SchemaOf(const Shape& shape) {
  std::string text;
  for (const char* table : {"T", "U"}) {
    text += std::string("[[table]]\nname = \"") + table +
            "\"\nfield = [ { name = \"V\", type = \"" + shape.type +
            "\", size = " + std::to_string(shape.size);
    if (shape.decimals != 0) text += ", decimals = " + std::to_string(shape.decimals);
    text += " }, { name = \"Pad\", type = \"String\", size = 8 } ]\n";
  }
  return text;
}

std::vector<std::string> Lines(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

class StoredBytes : public ToolTest {
 protected:
  void Store(const std::vector<Bytes>& values) const {
    constexpr size_t kPad = 8;
    BtrFile file(Folder() / "db" / "T.btr", Access::ReadWrite);
    Transaction transaction;
    for (Bytes record : values) {
      record.resize(record.size() + kPad, ' ');
      ASSERT_EQ(file.Insert(record), btrieve::kOk);
    }
    ASSERT_EQ(transaction.Commit(), btrieve::kOk);
  }

  // Exports T, imports the text into U, and gives what import said.
  Said Carry() const {
    Run({"export", Path("db"), "T", "-o", Path("t.csv")});
    return Run({"import", Path("db"), "U", Path("t.csv"), "--refused", Path("refused.csv"),
                "--show-refused", "1"});
  }
};

struct StoredCase {
  Shape shape;
  Bytes bytes;
  const char* text;
};

// clang-format off
const StoredCase kStorable[] = {
    {{"Date", 4, 0}, {29, 2, 0xE7, 7}, "2023/02/29"},
    {{"Date", 4, 0}, {31, 4, 0xE8, 7}, "2024/04/31"},
    {{"Date", 4, 0}, {0, 0, 0xE8, 7}, "2024/00/00"},
    {{"Date", 4, 0}, {1, 1, 0, 0}, "0000/01/01"},
    {{"Date", 4, 0}, {0, 0, 0, 0}, ""},
    {{"Time", 4, 0}, {0, 0, 0, 24}, "24:00:00"},
    {{"Time", 4, 0}, {0, 60, 60, 23}, "23:60:60"},
    {{"Time", 4, 0}, {99, 0, 0, 0}, "00:00:00.99"},
    {{"Logical", 1, 0}, {10}, "10"},
    {{"Logical", 1, 0}, {208}, "208"},
    {{"Logical", 1, 0}, {255}, "255"},
    {{"Currency", 8, 2}, {0, 0, 0, 0, 0, 0, 0, 0x80}, "-92233720368547758.08"},
    {{"Currency", 8, 0}, {0, 0, 0, 0, 0, 0, 0, 0x80}, "-9223372036854775808"},
    {{"AutoInc", 4, 0}, {0xFB, 0xFF, 0xFF, 0xFF}, "-5"},
    {{"AutoInc", 2, 0}, {0, 0x80}, "-32768"},
    {{"LString", 4, 0}, {4, 'a', 'b', 'c'}, "abc"},
    {{"Decimal", 2, 1}, {0x12, 0x3C}, "12.3"},
    {{"Bit", 1, 0}, {0}, ""},
    {{"Bit", 1, 0}, {'"'}, "\"\"\"\""},
    {{"Float", 4, 0}, {1, 0, 0, 0}, "0.000000000000000000000000000000000000000000001"},
};
// clang-format on

TEST_F(StoredBytes, WhatFormsCanStoreComesBack) {
  for (const StoredCase& row : kStorable) {
    Build(SchemaOf(row.shape));
    Store({row.bytes});
    EXPECT_EQ(Lines(Export("T")).back(), row.text + std::string(",")) << row.shape.type;
    EXPECT_EQ(Line(Carry()), "code=0 out=U: 1 row taken\n") << row.shape.type << " " << row.text;
    EXPECT_EQ(Export("U"), Export("T")) << row.shape.type;
  }
}

struct BrokenTextCase {
  std::vector<std::string> options;
  const char* rows;
  const char* last;  // line of the messages
};

// A record with half a character in it is one of those that must not get lost.
TEST_F(StoredBytes, ATextThatIsNoneIsWrittenAndTold) {
  Build(SchemaOf({"String", 4, 0}));
  Store({{'a', 'b', ' ', ' '}, {'c', 0x81, '1', ' '}, {0x93, 0xFA, 'd', 0x81}});
  const BrokenTextCase cases[] = {
      {{},
       "V,Pad\nab,\nc\xEF\xBF\xBD"
       "1,\n日d\xEF\xBF\xBD,\n",
       "2 texts with bytes that are no characters: these are written as U+FFFD\n"},
      {{"--on-unmappable", "skip"},
       "V,Pad\nab,\nc1,\n日d,\n",
       "2 texts with bytes that are no characters: these are left out\n"},
      {{"--encoding", "cp932"},
       "V,Pad\nab,\nc?1,\n\x93\xFA"
       "d?,\n",
       "2 texts with bytes that are no characters: these are written as ?\n"},
      {{"--on-unmappable", "error"},
       "V,Pad\nab,\n",
       "2 records left out; --on-unmappable=replace takes every record\n"},
  };
  for (const BrokenTextCase& row : cases) {
    std::vector<std::string> arguments = {"export", Path("db"), "T"};
    arguments.insert(arguments.end(), row.options.begin(), row.options.end());
    const Said said = Run(arguments);
    EXPECT_EQ(said.code, 1);
    EXPECT_EQ(said.out, row.rows);
    EXPECT_EQ(
        said.err,
        std::string("record at position 2, field \"V\": byte 0x81 (character 2 of the value) "
                    "is no text\nrecord at position 3, field \"V\": byte 0x81 (character 3 of "
                    "the value) is no text\n") +
            row.last);
  }
}

}  // namespace
}  // namespace qrndata::test
