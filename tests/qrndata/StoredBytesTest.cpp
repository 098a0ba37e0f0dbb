// What programs may have stored, as bytes: exported, and imported again from what was written.
#include <random>
#include <sstream>

#include "ToolFixture.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/CsvReader.h"

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

// A value that the type does not have.
const StoredCase kOdd[] = {
    {{"Date", 4, 0}, {1, 13, 0xE8, 7}, "expected a date such as 2024/01/31"},
    {{"Date", 4, 0}, {32, 1, 0xE8, 7}, "expected a date such as 2024/01/31"},
    {{"Date", 4, 0}, {1, 1, 0xFF, 0xFF}, "expected a date such as 2024/01/31"},
    {{"Time", 4, 0}, {0, 0, 0, 25}, "expected a time such as 09:30:00"},
    {{"Time", 4, 0}, {100, 0, 0, 1}, "expected a time such as 09:30:00"},
    {{"Decimal", 2, 0}, {0x1A, 0x2F}, "expected a number such as -12.50"},
    {{"Numeric", 3, 0}, {'1', 'x', '2'}, "expected a number such as -12.50"},
    {{"Float", 4, 0}, {0, 0, 0x80, 0x7F}, "expected a number such as -12.5 or 1.5e-7"},
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

TEST_F(StoredBytes, WhatNoTypeHasIsRefusedWithItsPlace) {
  for (const StoredCase& row : kOdd) {
    Build(SchemaOf(row.shape));
    Store({row.bytes});
    const Said said = Carry();
    EXPECT_EQ(said.err, std::string("t.csv:2:1: field \"V\": ") + row.text + "\n")
        << row.shape.type << " " << Export("T");
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

// Lines with numbers in one form: a display number without any digit reads 0, and is 0.0
// afterwards.
std::vector<std::string> SameNumbers(std::vector<std::string> lines, const Shape& shape) {
  for (std::string& line : lines) {
    const size_t end = line.find(',');
    if (shape.decimals == 0 || line.find('.') > end) continue;
    size_t last = line.find_last_not_of('0', end - 1);
    if (line[last] != '.') ++last;
    line.erase(last, end - last);
  }
  return lines;
}

// Of any kind, digits, or small numbers.
Bytes RandomBytes(const Shape& shape, std::mt19937& random) {
  struct Range {
    uint8_t least;
    unsigned count;
  };
  constexpr Range kRanges[] = {{0, 256}, {'0', 10}, {0, 16}};
  const Range& range = kRanges[random() % std::size(kRanges)];
  Bytes bytes(static_cast<size_t>(shape.size));
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(range.least + random() % range.count);
  return bytes;
}

// Whatever the bytes: the row is refused, or it reads the same afterwards.
TEST_F(StoredBytes, NoBytesComeBackAsAnotherValue) {
  const Shape shapes[] = {
      {"Integer", 1, 0},   {"Integer", 8, 0},  {"UBin", 2, 0},    {"UBin", 4, 0},
      {"AutoInc", 2, 0},   {"AutoInc", 4, 0},  {"Float", 4, 0},   {"Float", 8, 0},
      {"BFloat", 4, 0},    {"BFloat", 8, 0},   {"Date", 4, 0},    {"Time", 4, 0},
      {"Decimal", 3, 2},   {"Money", 2, 0},    {"Numeric", 3, 1}, {"NumericSTS", 3, 1},
      {"NumericSA", 2, 2}, {"Currency", 8, 3}, {"Logical", 1, 0}, {"Bit", 1, 0},
      {"String", 3, 0},    {"LString", 4, 0},  {"ZString", 3, 0},
  };
  constexpr size_t kRecords = 200;
  std::mt19937 random(20240131);
  for (const Shape& shape : shapes) {
    Build(SchemaOf(shape));
    std::vector<Bytes> values(kRecords);
    for (Bytes& value : values) value = RandomBytes(shape, random);
    Store(values);
    Carry();
    const std::vector<std::string> refused = Lines(Read("refused.csv"));
    std::vector<std::string> expected;
    size_t next = 1;
    for (const std::string& line : Lines(Read("t.csv"))) {
      const bool isRefused = next < refused.size() && refused[next] == line;
      isRefused ? void(++next) : expected.push_back(line);
    }
    EXPECT_EQ(next, std::max<size_t>(refused.size(), 1));
    const std::vector<std::string> carried = Lines(Run({"export", Path("db"), "U"}).out);
    EXPECT_EQ(SameNumbers(carried, shape), SameNumbers(expected, shape)) << shape.type;
    EXPECT_GT(expected.size(), kRecords / 20) << shape.type << ": most rows were refused";
    std::filesystem::remove(Folder() / "refused.csv");
  }
}

}  // namespace
}  // namespace qrndata::test
