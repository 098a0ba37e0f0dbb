// Order of the key types: each row lists values from the lowest up, "=" between equal ones. Every
// pair is compared directly, by ordered bytes, and by those of a descending key.
#include <gtest/gtest.h>

#include "btrieve/keys/KeyOrder.h"
#include "kit/Bytes.h"

namespace btrieve::test {
namespace {

struct OrderCase {
  const char* name;
  uint8_t type;
  uint16_t flags, length;
  const char* ascending;
};

const OrderCase kOrders[] = {
    {"string", 0, 0, 2, "0000 0001 2020 4142 4162 6142 8140 FFFF"},
    {"string folding case", 0, 0x400, 2, "4041 4142=4162=6142=6162 5B00 6000 7B00 8261=8241 8281"},
    {"string by its sequence", 0, 0x20, 1, "FF 62 61 42 00"},
    {"integer 1", 1, 0, 1, "80 FF 00 01 7F"},
    {"integer 2", 1, 0, 2, "0080 0180 FFFE FEFF FFFF 0000 0100 FF00 0001 FF7F"},
    {"integer 3", 1, 0, 3, "000080 FFFFFF 000000 010000 000100 FFFF7F"},
    {"integer 4", 1, 0, 4, "00000080 FFFFFFFF 00000000 01000000 00010000 FFFFFF7F"},
    {"integer 8", 1, 0, 8,
     "0000000000000080 FFFFFFFFFFFFFFFF 0000000000000000 0000000001000000 FFFFFFFFFFFFFF7F"},
    {"float 4", 2, 0, 4,
     "FFFFFFFF 000080FF FFFF7FFF 000080BF 01000080 00000000=00000080 01000000 0000803F 00000040 "
     "0000807F 0000C07F"},
    {"float 8", 2, 0, 8,
     "000000000000F0FF 000000000000F0BF 0000000000000000=0000000000000080 000000000000F03F "
     "000000000000F07F 000000000000F87F"},
    {"date", 3, 0, 4, "00000000 1F0CCF07 0101D007 0201D007 0102D007 0101D107 010100FF"},
    {"time", 4, 0, 4, "00000000 63000000 00010000 00000100 633B3B00 00000001 00000017"},
    {"decimal", 5, 0, 2,
     "999D 100D 099D 001D 000D=000C=000F=0000=AAAD=0001 001C=001F=0010=A01C 099C 100F 999C"},
    {"decimal 1", 5, 0, 1, "9D 1D 0D=00=0F=FF 1C 9C"},
    {"money", 6, 0, 3, "00010D 00000C 00001C 10000C"},
    {"logical", 7, 0, 1, "00 01 FF"},
    {"numeric", 8, 0, 3,
     "393952 30314A 30307D=303030=30307B=20207B=000000=7B7B7B 303041=303031=202041 30317B 393949"},
    {"numeric even", 8, 0, 2, "3952 304A 307D=3030 3041 317B=3130"},
    {"bfloat 4", 9, 0, 4,
     "00008082 00008081 00000000=FFFFFF00=00008000 00000080 00000081 00004081 00000082 FFFF7FFF"},
    {"bfloat 8", 9, 0, 8, "0000000000008081 0000000000000000 0000000000000081 0100000000000081"},
    {"lstring", 10, 0, 4,
     "00414243=00000000 01004243 02004100 01414243 02414100 03414142=FF414142 01420000"},
    {"lstring tie by zeros", 10, 0, 4, "01410000 02410000 03410000"},
    {"lstring folding case", 10, 0x400, 3, "014100=016100 026141=024161"},
    {"lstring by its sequence", 10, 0x20, 3, "000000 016200 016100 0261FF"},
    {"zstring", 11, 0, 4,
     "00414243=00000000 41000000=4100FFFF 41410000 41414141 41420000 FFFFFFFF"},
    {"zstring by its sequence", 11, 0x20, 3,
     "00FFFF FF0000 FFFF00 FFFFFF FFFF01 620000 610000 61FF00=61FF00"},
    {"unsigned 1", 14, 0, 1, "00 7F 80 FF"},
    {"unsigned 4", 14, 0, 4, "00000000 FFFFFF7F 00000080 FFFFFFFF"},
    {"unsigned 6", 14, 0, 6, "FF0000000000 000000000001 000000000080"},
    {"autoincrement 2", 15, 0, 2, "0000 0100=FFFF 0500=FBFF FF7F=0180 0080"},
    {"autoincrement 4", 15, 0, 4, "01000000=FFFFFFFF 00010000 00000080"},
    {"numericsts", 17, 0, 3, "39392D 30312D 30302B=30302D=303020=00007B 30312B=303120 39392B"},
    {"numericsa", 18, 0, 2, "3979 3171 3071 3070=3030=307B=0000 3031 3130"},
    {"currency", 19, 0, 8, "0000000000000080 F0D8FFFFFFFFFFFF 0000000000000000 1027000000000000"},
    {"timestamp", 20, 0, 8, "0000000000000000 FFFFFFFFFFFFFF7F 0000000000000080"},
    {"wide string", 25, 0, 4, "00000000 41000000 41004200 00010000 42300000"},
    {"wide zstring", 26, 0, 4, "00004200=00000000 41000000 41000100 00010000"},
    {"guid", 27, 0, 16, "000102030405060708090A0B0C0D0E0F 800102030405060708090A0B0C0D0E0F"},
    {"null indicator", 255, 0, 1, "00 01=80=FF"},
    {"old string", 0, 0xF000, 2, "0080 0100 8000"},
    {"old binary", 14, 0xF004, 2, "0000 0100 0001 FFFF"},
};

FileSpec SpecOf(const std::vector<Seg>& segments, uint16_t recordLength = 64) {
  FileSpec file;
  const Bytes block = CreateBlock({.recordLength = recordLength}, segments, ReversingSequence());
  EXPECT_EQ(ParseCreateBlock(block, file), kOk);
  return file;
}

Bytes OrderedBytes(const KeyOrder& order, const Bytes& key) {
  Bytes ordered(order.OrderedSize(), 0xEE);
  order.OrderKey(key.data(), ordered.data());
  return ordered;
}

int Sign(int value) { return value < 0 ? -1 : value > 0; }

// The values with the number of their group: equal ones share it.
std::vector<std::pair<int, Bytes>> Ranked(const OrderCase& order) {
  std::vector<std::pair<int, Bytes>> values;
  int rank = 0;
  for (const std::string& group : Split(order.ascending, ' ')) {
    for (const std::string& hex : Split(group, '=')) values.emplace_back(rank, Hex(hex));
    ++rank;
  }
  return values;
}

class KeyTypeOrder : public testing::TestWithParam<OrderCase> {};

TEST_P(KeyTypeOrder, ComparesAndNormalisesAlike) {
  const OrderCase& row = GetParam();
  const uint16_t flags = row.flags | (row.flags & 0xF000 ? 0 : 0x100);
  const auto up = SpecOf({{.length = row.length, .flags = flags, .type = row.type}});
  // An autoincrement key is always ascending.
  const int turned = row.type == 15 ? 1 : -1;
  const auto down = SpecOf({{.length = row.length,
                             .flags = static_cast<uint16_t>(turned < 0 ? flags | 0x40 : flags),
                             .type = row.type}});
  const KeyOrder ascending(up, up.keys.at(0));
  const KeyOrder descending(down, down.keys.at(0));
  const uint8_t* map = row.flags & 0x20    ? up.sequences[0].Map()
                       : row.flags & 0x400 ? CaseFoldMap()
                                           : nullptr;
  const auto values = Ranked(row);
  for (const auto& [rankA, a] : values) {
    for (const auto& [rankB, b] : values) {
      SCOPED_TRACE(ToHex(a) + " " + ToHex(b));
      ASSERT_EQ(a.size(), row.length);
      const int expected = Sign(rankA - rankB);
      EXPECT_EQ(Sign(FindKeyType(row.type)->compare(a.data(), b.data(), row.length, map)),
                expected);
      const auto orderOf = [&one = a, &other = b](const KeyOrder& order) {
        const Bytes left = OrderedBytes(order, one);
        const Bytes right = OrderedBytes(order, other);
        return Sign(std::memcmp(left.data(), right.data(), left.size()));
      };
      EXPECT_EQ(orderOf(ascending), expected);
      EXPECT_EQ(orderOf(descending), turned * expected);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, KeyTypeOrder, testing::ValuesIn(kOrders), [](const auto& param) {
  std::string name = param.param.name;
  for (char& c : name) c = isalnum(static_cast<unsigned char>(c)) ? c : '_';
  return name;
});

TEST(KeyOrder, LongestDecimalComparesByItsLastDigit) {
  const auto file = SpecOf({{.length = 64, .flags = 0x100, .type = 5}});
  const KeyOrder order(file, file.keys[0]);
  Bytes lower(64, 0x99);
  Bytes higher(64, 0x99);
  lower.back() = 0x8C;
  higher.back() = 0x9C;
  EXPECT_LT(OrderedBytes(order, lower), OrderedBytes(order, higher));
}

// A record "AbCd" with a one-byte integer behind it, in a key of all three kinds of segment.
TEST(KeyOrder, SegmentsComeFromTheirOwnPlacesAndDirections) {
  const auto file = SpecOf({{.position = 5, .length = 1, .flags = 0x150, .type = 1},
                            {.position = 1, .length = 2, .flags = 0x510, .type = 0},
                            {.position = 3, .length = 2, .flags = 0x100, .type = 0}});
  const KeyOrder order(file, file.keys[0]);
  const Bytes record = Padded("AbCd\x05", 64);
  Bytes raw(order.KeyLength());
  order.CopyKey(record.data(), raw.data());
  EXPECT_EQ(ToHex(raw), "0541624364");
  Bytes ordered(order.OrderedSize());
  order.OrderRecord(record.data(), ordered.data());
  EXPECT_EQ(ToHex(ordered), "7a41424364");
  EXPECT_EQ(ordered, OrderedBytes(order, raw));
}

TEST(KeyOrder, SameRawSeesCaseThatTheOrderDoesNot) {
  const auto file = SpecOf({{.length = 2, .flags = 0x500, .type = 0}});
  const KeyOrder order(file, file.keys[0]);
  const Bytes small = Padded("ab", 64);
  const Bytes large = Padded("AB", 64);
  EXPECT_EQ(OrderedBytes(order, small), OrderedBytes(order, large));
  EXPECT_FALSE(order.SameRaw(small.data(), large.data()));
  EXPECT_TRUE(order.SameRaw(small.data(), small.data()));
}

struct NullCase {
  const char* name;
  uint16_t flags;
  uint8_t nullA, nullB;
  const char* record;
  bool leftOut;
};

const NullCase kNulls[] = {
    {"no null flag", 0, 0, 0, "0000 0000", false},
    {"all segments, both null", 0x08, 0, 0, "0000 0000", true},
    {"any segment, one null", 0x200, 0, 0, "0000 0001", true},
    {"both flags act as any", 0x208, 0, 0, "0100 0000", true},
};

TEST(KeyOrder, LeavesOutNullRecords) {
  for (const NullCase& row : kNulls) {
    const auto flags = static_cast<uint16_t>(row.flags | 0x100);
    const auto file =
        SpecOf({{.position = 1,
                 .length = 2,
                 .flags = static_cast<uint16_t>(flags | 16),
                 .nullValue = row.nullA},
                {.position = 3, .length = 2, .flags = flags, .nullValue = row.nullB}});
    Bytes record = Hex(row.record);
    record.resize(64);
    EXPECT_EQ(KeyOrder(file, file.keys[0]).LeavesOut(record.data()), row.leftOut) << row.name;
  }
}

TEST(KeyOrder, NullIsAskedForByANullIndicatorSegmentOnly) {
  const auto file = SpecOf({{.position = 1, .length = 1, .flags = 0x110, .type = 255},
                            {.position = 2, .length = 1, .flags = 0x100, .type = 0}});
  const KeyOrder order(file, file.keys[0]);
  EXPECT_TRUE(order.AsksForNull(Hex("0100").data()));
  EXPECT_FALSE(order.AsksForNull(Hex("0001").data()));
}

TEST(KeyOrder, AutoIncrementFillsItsFieldUpToTheHighestValue) {
  const auto file = SpecOf({{.position = 3, .length = 2, .flags = 0x100, .type = 15}});
  const KeyOrder order(file, file.keys[0]);
  Bytes record(64, 0x11);
  EXPECT_FALSE(order.WantsAutoIncrement(record.data()));
  record[2] = record[3] = 0;
  EXPECT_TRUE(order.WantsAutoIncrement(record.data()));
  EXPECT_FALSE(order.PutAutoIncrement(32768, record.data()));
  EXPECT_EQ(ToHex({record.begin(), record.begin() + 5}), "1111000011");
  EXPECT_TRUE(order.PutAutoIncrement(32767, record.data()));
  EXPECT_EQ(ToHex({record.begin(), record.begin() + 5}), "1111ff7f11");
  Bytes ordered(2);
  order.OrderRecord(record.data(), ordered.data());
  EXPECT_EQ(order.AutoIncrementOf(ordered.data()), 32767u);
}

}  // namespace
}  // namespace btrieve::test
