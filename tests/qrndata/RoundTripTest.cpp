// Values of every type through a data file and back.
#include <sstream>

#include "ToolFixture.h"
#include "tools/qrndata/CsvReader.h"
#include "tools/qrndata/export/RecordWriter.h"

namespace qrndata::test {
namespace {

class RoundTrip : public ToolTest {};

struct ValueCase {
  const char* type;
  int size;  // 0: the type's own
  int decimals;
  std::string given;
  std::string read;  // as export writes it
};

std::string Nines(size_t count) { return std::string(count, '9'); }

const ValueCase kValues[] = {
    {"String", 8, 0, "abc", "abc"},
    {"String", 8, 0, "  ab", "  ab"},
    {"String", 8, 0, "漢字ｶﾅ", "漢字ｶﾅ"},
    {"String", 8, 0, "表ソ能-", "表ソ能-"},
    {"String", 8, 0, "a,\"b\"\n", "a,\"b\"\n"},
    {"String", 1, 0, "", ""},
    {"LString", 10, 0, "123456789", "123456789"},
    {"LString", 128, 0, Nines(127), Nines(127)},
    {"ZString", 10, 0, "12345678 ", "12345678 "},
    {"ZString", 4096, 0, Nines(4095), Nines(4095)},
    {"Integer", 1, 0, "255", "255"},
    {"Integer", 2, 0, "-32768", "-32768"},
    {"Integer", 2, 0, "32767", "32767"},
    {"Integer", 4, 0, "-2147483648", "-2147483648"},
    {"Integer", 4, 0, "+007", "7"},
    {"Integer", 8, 0, "-9223372036854775808", "-9223372036854775808"},
    {"Integer", 8, 0, "9223372036854775807", "9223372036854775807"},
    {"UBin", 2, 0, "65535", "65535"},
    {"UBin", 4, 0, "4294967295", "4294967295"},
    {"Float", 4, 0, "0.1", "0.1"},
    {"Float", 4, 0, "-16777217", "-16777216"},
    {"Float", 8, 0, "0.1", "0.1"},
    {"Float", 8, 0, "1.5e-7", "0.00000015"},
    {"Float", 8, 0, "-9007199254740993", "-9007199254740992"},
    {"BFloat", 4, 0, "1.1", "1.1"},
    {"BFloat", 4, 0, "0", "0"},
    {"BFloat", 8, 0, "-2.5", "-2.5"},
    {"BFloat", 8, 0, "0.1", "0.1"},
    {"Date", 0, 0, "2024/02/29", "2024/02/29"},
    {"Date", 0, 0, "2024-1-5", "2024/01/05"},
    {"Date", 0, 0, "9999/12/31", "9999/12/31"},
    {"Date", 0, 0, "", ""},
    {"Time", 0, 0, "9:30", "09:30:00"},
    {"Time", 0, 0, "23:59:59.99", "23:59:59.99"},
    {"Time", 0, 0, "", ""},
    {"Decimal", 3, 2, "-999.99", "-999.99"},
    {"Decimal", 3, 2, "0.01", "0.01"},
    {"Decimal", 3, 0, "99999", "99999"},
    {"Decimal", 64, 0, Nines(127), Nines(127)},
    {"Money", 7, 2, "-123456789.05", "-123456789.05"},
    {"Numeric", 5, 1, "-9999.9", "-9999.9"},
    {"Numeric", 15, 0, "999999999999999", "999999999999999"},
    {"Numeric", 3, 3, ".125", "0.125"},
    {"NumericSTS", 6, 2, "-999.99", "-999.99"},
    {"NumericSTS", 6, 2, "1.05", "1.05"},
    {"NumericSA", 5, 0, "-99999", "-99999"},
    {"NumericSA", 5, 0, "12", "12"},
    {"Currency", 0, 4, "-922337203685477.5807", "-922337203685477.5807"},
    {"Currency", 0, 0, "5", "5"},
    {"Logical", 0, 0, "true", "1"},
    {"Logical", 0, 0, "0", "0"},
    {"Bit", 0, 0, "A", "A"},
};

std::string FieldEntry(const ValueCase& row, size_t number) {
  std::string entry = "  { name = \"f" + std::to_string(number) + "\", type = \"" + row.type + "\"";
  if (row.size != 0) entry += ", size = " + std::to_string(row.size);
  if (row.decimals != 0) entry += ", decimals = " + std::to_string(row.decimals);
  return entry + " },\n";
}

std::vector<std::string> CellsOfLastRow(const std::string& csv) {
  std::istringstream stream(csv);
  CsvReader reader(stream);
  CsvRow row;
  while (reader.Next(row)) continue;
  std::vector<std::string> cells;
  for (const CsvCell& cell : row.cells) cells.push_back(cell.text);
  return cells;
}

// One table with a field for each case, one record with all values.
TEST_F(RoundTrip, EveryTypeKeepsItsValues) {
  std::string fields, names, values;
  size_t count = 0;
  for (const ValueCase& row : kValues) {
    fields += FieldEntry(row, count);
    names += (count == 0 ? "f" : ",f") + std::to_string(count);
    values += (count == 0 ? "" : ",") + CsvText(row.given, true);
    ++count;
  }
  Build("[[table]]\nname = \"T\"\nfield = [\n" + fields + "]\n");
  ASSERT_EQ(Line(Import("T", names + "\n" + values + "\n")), "code=0 out=T: 1 row taken\n");
  const std::string written = Export("T");
  const std::vector<std::string> cells = CellsOfLastRow(written);
  ASSERT_EQ(cells.size(), count) << written;
  for (size_t at = 0; at < count; ++at) {
    EXPECT_EQ(cells[at], kValues[at].read)
        << kValues[at].type << " of " << kValues[at].size << " given \"" << kValues[at].given;
  }
  // What was written gives the same record again.
  ASSERT_EQ(Import("T", written).code, 0);
  EXPECT_EQ(CellsOfLastRow(Export("T")), cells);
}

TEST_F(RoundTrip, NullIsNotTheEmptyValue) {
  Build(R"([[table]]
name = "T"
field = [
  { name = "No", type = "Integer", size = 2 },
  { name = "Text", type = "String", size = 4, nullable = true },
  { name = "Day", type = "Date", nullable = true },
  { name = "Sum", type = "Decimal", size = 3, decimals = 1, nullable = true },
  { name = "Word", type = "LString", size = 5, nullable = true },
])");
  const std::string csv =
      "No,Text,Day,Sum,Word\n"
      "1,,,,\n"
      "2,\"\",\"\",0.0,\"\"\n"
      "3,ab,2024/01/31,1.5,xyz\n";
  ASSERT_EQ(Import("T", csv).code, 0);
  EXPECT_EQ(Export("T"), csv);
  EXPECT_EQ(Export("T", {"--format", "json"}),
            R"([
{"No": 1, "Text": null, "Day": null, "Sum": null, "Word": null},
{"No": 2, "Text": "", "Day": "", "Sum": 0.0, "Word": ""},
{"No": 3, "Text": "ab", "Day": "2024/01/31", "Sum": 1.5, "Word": "xyz"}
]
)");
}

TEST_F(RoundTrip, LongTextsKeepTheirLength) {
  const std::string page(5000, 'x');
  for (const char* type : {"Note", "LVar", "Blob"}) {
    const std::string size = std::string(type) == "Blob" ? "" : ", size = 8000";
    Build(
        "[[table]]\nname = \"T\"\nfield = [ {name = \"Id\", type = \"AutoInc\"}, {name = \"Text\", "
        "type = \"" +
        std::string(type) + "\"" + size + "} ]\nkey = [ {fields = [\"Id\"]} ]\n");
    const std::string csv = "Id,Text\n1," + page + "\n2,\n3,\"二行の\n文\"\n";
    ASSERT_EQ(Import("T", csv).code, 0) << type;
    EXPECT_EQ(Export("T"), csv) << type;
  }
}

}  // namespace
}  // namespace qrndata::test
