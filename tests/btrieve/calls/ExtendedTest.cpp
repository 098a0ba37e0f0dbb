// Extended reads and inserts through the calls at their limits; what they read and reply is held
// against the model.
#include <gtest/gtest.h>

#include "clients/TestFile.h"
#include "kit/Descriptor.h"

namespace btrieve::test {
namespace {

// Its length word has 16 bits.
TEST(ExtendedRead, GivesNoRecordThatItsLengthWordCannotTell) {
  constexpr uint16_t kLength = 60000;
  const struct {
    uint16_t first, second;
    Status status;
    uint16_t records, told;
  } kRows[] = {
      {32767, 32768, kOk, 1, 65535},
      {32768, 32768, kDataBufferLength, 0, 0},
      {40000, 40000, kDataBufferLength, 0, 0},
  };
  TestFile file(CreateBlock({.recordLength = 8, .flags = 1}, {{.flags = 0x102, .type = 1}}));
  ASSERT_EQ(file.Insert(Number(int32_t{1}) + Bytes(kLength - 4, 'x')), 0);
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.first + row.second);
    const Descriptor fields{.signature = "UC", .fields = {{row.first, 0}, {row.second, 4}}};
    ASSERT_EQ(file.Call(kGetFirst, {.room = kLength}).status, 0);
    const CallOut out = file.Call(36, {.data = DescriptorBytes(fields), .room = 300000});
    EXPECT_EQ(out.status, row.status);
    EXPECT_EQ(NumberAt<uint16_t>(out.data, 0), row.records);
    EXPECT_EQ(out.length, row.records == 0 ? 2u : 8u + row.told);
    if (row.records != 0) {
      EXPECT_EQ(NumberAt<uint16_t>(out.data, 2), row.told);
    }
  }
}

TEST(ExtendedSearch, RejectsUpToTheSystemsCount) {
  TestFile file(CreateBlock({.recordLength = 4}, {{.flags = 0x102, .type = 1}}));
  ASSERT_EQ(file.Call(kBegin, {}).status, 0);
  for (int32_t i = 0; i < 5000; ++i) ASSERT_EQ(file.Insert(Number(i)), 0);
  ASSERT_EQ(file.Call(kEnd, {}).status, 0);
  ASSERT_EQ(file.Call(kGetFirst, {.room = 4}).status, 0);
  const Bytes descriptor = DescriptorBytes(
      {.signature = "UC", .terms = {{1, 4, 0, kEq, kLastTerm, Number(int32_t{4999})}}});
  EXPECT_EQ(file.Call(36, {.data = descriptor, .room = 100}).status, kRejectCount);
  const CallOut position = file.Call(kGetNext, {.room = 4});
  EXPECT_EQ(NumberAt<int32_t>(position.data, 0), 4095);
}

// What the parts refuse, and that nothing has happened then.
TEST(ExtendedRead, RefusedOnesLeaveBuffersAndCursor) {
  const Descriptor kWrong[] = {{.signature = "XX"}, {.wanted = 0}, {.lengthOff = 1}};
  TestFile file(PairBlock());
  for (int32_t id = 1; id < 4; ++id) ASSERT_EQ(file.Insert(Pair(id)), 0);
  for (const Descriptor& descriptor : kWrong) {
    ASSERT_EQ(file.Call(kGetFirst, {.room = 8}).status, 0);
    const CallOut out = file.Call(36, {.data = DescriptorBytes(descriptor)});
    EXPECT_EQ(out.status, kDescriptor);
    EXPECT_FALSE(out.dataTouched);
    EXPECT_EQ(out.length, out.data.size());
    EXPECT_EQ(file.Call(kGetNext, {.room = 8}).Returned(), Pair(2));
  }
  for (const Bytes& data : {Bytes{}, Hex("0000"), Hex("0100 0800") + Pair(9) + Bytes{0}}) {
    const CallOut out = file.Call(kInsertExtended, {.data = data});
    EXPECT_EQ(out.status, kInsertDescriptor) << ToHex(data);
    EXPECT_FALSE(out.dataTouched);
  }
  EXPECT_EQ(file.Counts(), "3 3");
}

}  // namespace
}  // namespace btrieve::test
