// Specifications: what Create and Create Index take and refuse, and the stored form.
#include <gtest/gtest.h>

#include "btrieve/keys/KeySpec.h"
#include "btrieve/operations/StatReply.h"
#include "kit/Bytes.h"

namespace btrieve::test {
namespace {

constexpr uint16_t kDup = 0x101;

// Without a segment a block would have no key: rows that are about the head use one.
const std::vector<Seg> kOneKey = {{}};

struct BlockCase {
  const char* name;
  Bytes block;
  Status status;
};

Bytes Sliced(Bytes block, size_t size) {
  block.resize(size);
  return block;
}

std::vector<Seg> Repeated(size_t keys, Seg segment = {}) { return std::vector<Seg>(keys, segment); }

std::vector<Seg> OneKeyOf(size_t segments) {
  std::vector<Seg> key(segments, Seg{.length = 1, .flags = 0x110});
  key.back().flags = 0x100;
  return key;
}

const BlockCase kGood[] = {
    {"shortest record", CreateBlock({.recordLength = 4}, kOneKey), kOk},
    {"longest record", CreateBlock({.recordLength = 4088}, kOneKey), kOk},
    {"longest record with a linked key", CreateBlock({.recordLength = 4080}, {{.flags = kDup}}),
     kOk},
    {"repeating keys take no pointer",
     CreateBlock({.recordLength = 4088}, {{.flags = kDup | 0x80}}), kOk},
    {"longest variable record", CreateBlock({.recordLength = 4084, .flags = 1}, kOneKey), kOk},
    {"119 keys", CreateBlock({}, Repeated(119)), kOk},
    {"119 segments", CreateBlock({}, OneKeyOf(119)), kOk},
    {"type of an old key is ignored", CreateBlock({}, {{.flags = 0, .type = 12}}), kOk},
    {"key of 255 bytes", CreateBlock({.recordLength = 300}, {{.length = 255}}), kOk},
    {"longest key of a page", CreateBlock({.recordLength = 100, .pageSize = 512}, {{.length = 54}}),
     kOk},
    {"autoincrement again as an integer of a later key",
     CreateBlock({}, {{.type = 15}, {.flags = 0x110, .type = 1}, {.position = 5}}), kOk},
};

const BlockCase kBad[] = {
    {"empty", {}, 22},
    {"head cut", Sliced(CreateBlock({}, {}), 15), 22},
    {"segment cut", Sliced(CreateBlock({}, kOneKey), 31), 22},
    {"another segment announced", CreateBlock({}, {{.flags = 0x110}}), 26},
    {"page of no size", CreateBlock({.pageSize = 0}, kOneKey), 24},
    {"page too large", CreateBlock({.pageSize = 32768}, kOneKey), 24},
    {"9 segments on the smallest page", CreateBlock({.pageSize = 512}, OneKeyOf(9)), 26},
    {"55 segments on 2048", CreateBlock({.pageSize = 2048}, OneKeyOf(55)), 26},
    {"number too high", CreateBlock({.flags = 0x400}, {{.number = 119}}), 26},
    {"number twice", CreateBlock({.flags = 0x400}, Repeated(2, {.number = 3})), 26},
    {"position 0", CreateBlock({}, {{.position = 0}}), 27},
    {"record too short", CreateBlock({.recordLength = 3}, {}), 28},
    {"linked key takes its pointer", CreateBlock({.recordLength = 4081}, {{.flags = kDup}}), 28},
    {"reserved pointers",
     CreateBlock({.recordLength = 4073, .flags = 0x100, .reservedPointers = 2}, {}), 28},
    {"variable pointer", CreateBlock({.recordLength = 4085, .flags = 1}, {}), 28},
    {"no length", CreateBlock({}, {{.length = 0}}), 29},
    {"key of 256 bytes",
     CreateBlock({.recordLength = 300}, {{.length = 255, .flags = 0x110}, {.length = 1}}), 29},
    {"seven entries a page", CreateBlock({.recordLength = 100, .pageSize = 512}, {{.length = 55}}),
     29},
    {"float of 5", CreateBlock({}, {{.length = 5, .type = 2}}), 29},
    {"date of 3", CreateBlock({}, {{.length = 3, .type = 3}}), 29},
    {"decimal of 65", CreateBlock({.recordLength = 80}, {{.length = 65, .type = 5}}), 29},
    {"logical of 3", CreateBlock({}, {{.length = 3, .type = 7}}), 29},
    {"lstring of 1", CreateBlock({}, {{.length = 1, .type = 10}}), 29},
    {"wide string of 3", CreateBlock({}, {{.length = 3, .type = 25}}), 29},
    {"null indicator of 2", CreateBlock({}, {{.length = 2, .type = 255}}), 29},
    {"repeating on one segment only", CreateBlock({}, {{.flags = 0x191}, {.flags = 0x101}}), 45},
    {"sequence cut", CreateBlock({}, {{.flags = 0x120}}, Sliced(ReversingSequence(), 264)), 48},
    {"sequence of another form", CreateBlock({}, {{.flags = 0x120}}, Padded("\xAD", 265)), 48},
    {"sequence on a number", CreateBlock({}, {{.flags = 0x120, .type = 1}}, ReversingSequence()),
     49},
    {"note", CreateBlock({}, {{.type = 12}}), 49},
    {"lvar", CreateBlock({}, {{.type = 13}}), 49},
    {"bit", CreateBlock({}, {{.type = 16}}), 49},
    {"blob", CreateBlock({}, {{.type = 21}}), 49},
    {"type 28", CreateBlock({}, {{.type = 28}}), 49},
    {"type 254", CreateBlock({}, {{.type = 254}}), 49},
    {"autoincrement under another key", CreateBlock({}, {{.type = 15}, {.position = 4, .type = 0}}),
     55},
    {"autoincrement after its integer", CreateBlock({}, {{.type = 1}, {.type = 15}}), 55},
};

Status Parse(const Bytes& block) {
  FileSpec file;
  return ParseCreateBlock(block, file);
}

TEST(CreateBlock, TakesWhatCallersSend) {
  for (const BlockCase& row : kGood) EXPECT_EQ(Parse(row.block), row.status) << row.name;
}

TEST(CreateBlock, RefusesEachBrokenRuleWithItsStatus) {
  for (const BlockCase& row : kBad) EXPECT_EQ(Parse(row.block), row.status) << row.name;
}

TEST(CreateBlock, KeysStandByTheirNumbers) {
  FileSpec file;
  const Bytes block = CreateBlock({.flags = 0x400}, {{.position = 5, .number = 9}, {.number = 2}});
  ASSERT_EQ(ParseCreateBlock(block, file), kOk);
  EXPECT_EQ(file.keys[0].number, 2);
  EXPECT_EQ(file.FindKey(9)->segments[0].offset, 4);
  EXPECT_EQ(file.FindKey(0), nullptr);
}

FileSpec TwoKeys(Head head = {}) {
  FileSpec file;
  EXPECT_EQ(ParseCreateBlock(CreateBlock(head, {{}, {.position = 5}}), file), kOk);
  return file;
}

struct IndexCase {
  const char* name;
  int8_t keyNumber;
  std::vector<Seg> segments;
  Status status;
  int number;
};

const IndexCase kIndexes[] = {
    {"highest", static_cast<int8_t>(128 + 118), {{}}, 0, 118},
    {"taken", static_cast<int8_t>(128 + 1), {{}}, 6, 0},
    {"too high", static_cast<int8_t>(128 + 119), {{}}, 6, 0},
    {"no segment", 0, {}, 22, 0},
    {"announces another", 0, {{.flags = 0x110}}, 26, 0},
    {"outside the record", 0, {{.position = 15}}, 27, 0},
    {"no length", 0, {{.length = 0}}, 29, 0},
    {"repeating on one segment only", 0, {{.flags = 0x111}, {.flags = 0x181}}, 45, 0},
    {"no sequence", 0, {{.flags = 0x120}}, 48, 0},
    {"no key type", 0, {{.type = 13}}, 49, 0},
    {"autoincrement over another key", 0, {{.type = 15}}, 55, 0},
    {"autoincrement beside them", 0, {{.position = 9, .type = 15}}, 0, 2},
};

TEST(CreateIndexBlock, AddsAKeyOrTellsWhyNot) {
  for (const IndexCase& row : kIndexes) {
    FileSpec file = TwoKeys();
    const FileSpec before = file;
    Bytes data;
    for (const Seg& segment : row.segments) data = data + SegmentBytes(segment);
    uint8_t added = 0;
    EXPECT_EQ(AddIndexFromBlock(data, row.keyNumber, file, added), row.status) << row.name;
    if (row.status != kOk) {
      EXPECT_EQ(file, before) << row.name;
    } else {
      EXPECT_EQ(added, row.number) << row.name;
      EXPECT_NE(file.FindKey(row.number), nullptr) << row.name;
    }
  }
}

TEST(CreateIndexBlock, LinkedDuplicatesNeedAReservedPointer) {
  FileSpec file = TwoKeys({.flags = 0x100, .reservedPointers = 1});
  uint8_t added = 0;
  const Bytes data = SegmentBytes({.flags = kDup});
  ASSERT_EQ(AddIndexFromBlock(data, 0, file, added), kOk);
  EXPECT_FALSE(file.FindKey(2)->segments[0].Has(kRepeating));
  EXPECT_EQ(file.reservedPointers, 0);
  ASSERT_EQ(AddIndexFromBlock(data, 0, file, added), kOk);
  EXPECT_TRUE(file.FindKey(3)->segments[0].Has(kRepeating));
}

TEST(CreateIndexBlock, BringsItsSequenceOrUsesTheFiles) {
  FileSpec file = TwoKeys();
  uint8_t added = 0;
  const Bytes data = SegmentBytes({.flags = 0x120});
  ASSERT_EQ(AddIndexFromBlock(data + ReversingSequence(), 0, file, added), kOk);
  ASSERT_EQ(AddIndexFromBlock(data + ReversingSequence(), 0, file, added), kOk);
  ASSERT_EQ(AddIndexFromBlock(data, 0, file, added), kOk);
  EXPECT_EQ(file.sequences.size(), 1u);
  EXPECT_EQ(file.FindKey(4)->segments[0].sequence, 0);
}

TEST(KeySpec, DroppedKeyMovesTheHigherOnesDownOrLeavesAGap) {
  FileSpec file;
  ASSERT_EQ(ParseCreateBlock(CreateBlock({}, Repeated(3)), file), kOk);
  FileSpec gap = file;
  EXPECT_TRUE(DropKey(file, 1, true));
  EXPECT_NE(file.FindKey(1), nullptr);
  EXPECT_EQ(file.FindKey(2), nullptr);
  EXPECT_TRUE(DropKey(gap, 1, false));
  EXPECT_EQ(gap.FindKey(1), nullptr);
  EXPECT_NE(gap.FindKey(2), nullptr);
  EXPECT_FALSE(DropKey(gap, 1, false));
}

FileSpec RichSpec() {
  FileSpec file;
  const Bytes block = CreateBlock({.flags = 0x401, .version = 0x60},
                                  {{.flags = 0x2193, .nullValue = 9, .number = 4},
                                   {.position = 5, .flags = 0x2183, .number = 4},
                                   {.flags = 0x120, .number = 0}},
                                  ReversingSequence());
  EXPECT_EQ(ParseCreateBlock(block, file), kOk);
  return file;
}

TEST(StoredSpec, ComesBackAsItWas) {
  const FileSpec file = RichSpec();
  FileSpec loaded;
  ASSERT_TRUE(LoadSpec(StoreSpec(file), loaded));
  EXPECT_EQ(loaded, file);
}

TEST(StoredSpec, RefusesEveryFlippedByteAndEveryCut) {
  const Bytes stored = StoreSpec(RichSpec());
  FileSpec loaded;
  for (size_t i = 0; i < stored.size(); ++i) {
    Bytes damaged = stored;
    damaged[i] ^= 0x40;
    EXPECT_FALSE(LoadSpec(damaged, loaded)) << "byte " << i;
    EXPECT_FALSE(LoadSpec(Sliced(stored, i), loaded)) << "cut to " << i;
  }
}

std::string Stat(const FileSpec& file, size_t room, int8_t keyNumber = -1) {
  Bytes reply(room, 0xEE);
  uint32_t length = 0;
  const Status status = WriteStat(file, {7, {2, 3}}, keyNumber, reply, length);
  for (size_t i = length; i < room; ++i) EXPECT_EQ(reply[i], 0xEE);
  reply.resize(length);
  return std::to_string(status) + " " + ToHex(reply);
}

constexpr char kStatHead[] =
    "1000001002600700000001040000"
    "0000";
constexpr char kStatKey0[] = "01000400200102000000000000000000";
constexpr char kStatKey4a[] = "01000400932103000000000900000400";
constexpr char kStatKey4b[] = "05000400832103000000000000000400";

TEST(StatReply, GivesTheSpecificationWithCounts) {
  const FileSpec file = RichSpec();
  const std::string keys = std::string(kStatKey0) + kStatKey4a + kStatKey4b;
  EXPECT_EQ(Stat(file, 64), "0 " + (kStatHead + keys));
  EXPECT_EQ(Stat(file, 500), "0 " + (kStatHead + keys) + ToHex(ReversingSequence()));
  EXPECT_EQ(Stat(file, 64, 0), "0 10000010020007000000010400000000" + keys);
}

TEST(StatReply, ShortBufferGetsWholeSpecificationsOnly) {
  const FileSpec file = RichSpec();
  EXPECT_EQ(Stat(file, 63), std::string("22 ") + kStatHead + kStatKey0 + kStatKey4a);
  EXPECT_EQ(Stat(file, 47), std::string("22 ") + kStatHead + kStatKey0);
  EXPECT_EQ(Stat(file, 16), std::string("22 ") + kStatHead);
  EXPECT_EQ(Stat(file, 15), "22 ");
  EXPECT_EQ(Stat(file, 328), std::string("0 ") + kStatHead + kStatKey0 + kStatKey4a + kStatKey4b);
}

}  // namespace
}  // namespace btrieve::test
