// The walk over a record's fields: stored sizes and null indicators.

#include "FieldCases.h"

namespace qrn {
namespace {

int32_t StoredSize(int32_t type, int32_t size, std::string_view hex = "") {
  const Bytes value = FromHex(hex);
  return GetFieldStoredSize({}, Field(type, size), value.data(), value.size());
}

TEST(RecordWalk, StoredSizes) {
  struct {
    const char* name;
    int32_t type, stored;
  } const cases[] = {
      {"String", kString, 33},  {"Integer", kInteger, 33}, {"Float", kFloat, 33},
      {"Date", kDate, 4},       {"Time", kTime, 4},        {"Decimal", kDecimal, 33},
      {"Money", kMoney, 33},    {"Logical", kLogical, 1},  {"Numeric", kNumeric, 33},
      {"BFloat", kBFloat, 33},  {"LString", kLString, 33}, {"ZString", kZString, 33},
      {"UBin", kUBin, 33},      {"AutoInc", kAutoInc, 33}, {"bit", kBit, 1},
      {"STS", kNumericSTS, 33}, {"SA", kNumericSA, 33},    {"Currency", kCurrency, 8},
      {"Blob", kBlob, 8},
  };
  for (const auto& row : cases) EXPECT_EQ(StoredSize(row.type, 33), row.stored) << row.name;
  EXPECT_EQ(StoredSize(kNote, 33, "41 42 00 43"), 3);
  EXPECT_EQ(StoredSize(kLVar, 2, "00"), 1);
}

class NullTable {
 public:
  NullTable(std::vector<DbFieldInfo> fields, std::string_view hex)
      : fields_(std::move(fields)), record_(FromHex(hex)) {
    char name = 'A';
    for (DbFieldInfo& field : fields_) field.Name[0] = name++;
    table_.Fields = fields_.data();
    table_.FieldCount = static_cast<int32_t>(fields_.size());
    table_.RecordBuffer = record_.data();
    table_.BufferAllocated = record_.size();
  }
  int32_t IsNull(const char* name) const { return IsFieldNull({}, table_, name); }

 private:
  std::vector<DbFieldInfo> fields_;
  Bytes record_;
  DbTableInfo table_{};
};

DbFieldInfo Nullable(int32_t type, int32_t size) {
  DbFieldInfo field = Field(type, size);
  field.Flags = kFieldNullable;
  return field;
}

TEST(RecordWalk, TheByteInFrontOfANullableFieldDecides) {
  const NullTable table({Nullable(kString, 2), Field(kString, 1), Nullable(kNote, 9),
                         Nullable(kDate, 99), Nullable(kBit, 5)},
                        "01 41 41 42 00 43 43 00 FF 00 00 00 00 00 01");
  EXPECT_EQ(table.IsNull("A"), 65535);
  EXPECT_EQ(table.IsNull("B"), 0) << "not nullable";
  EXPECT_EQ(table.IsNull("C"), 0);
  EXPECT_EQ(table.IsNull("D"), 65535);
  EXPECT_EQ(table.IsNull("E"), 0);
  EXPECT_EQ(table.IsNull("a"), 0) << "names are case-sensitive";
  EXPECT_EQ(table.IsNull(""), 0);
  EXPECT_EQ(table.IsNull(nullptr), 0);
}

TEST(RecordWalk, AnUnknownTypeOnTheWayIsReported) {
  const NullTable table({Field(kWideString, 6), Nullable(kString, 2)}, "01 00");
  const Watch watch;
  EXPECT_EQ(table.IsNull("B"), 65535) << "the unknown field takes no bytes";
  EXPECT_EQ(watch.Boxes(), "[2000 VE011 データ型が不正です。]");
}

}  // namespace
}  // namespace qrn
