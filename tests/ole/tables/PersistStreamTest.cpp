#include "binding/tables/AllTables.h"
#include "ole/tables/PersistStream.h"
#include "tests/support/Test.h"

namespace qrn::ole {
namespace {

using Bytes = std::vector<uint8_t>;

class MemorySource final : public ByteSource {
 public:
  explicit MemorySource(const Bytes& bytes) : bytes_(bytes) {}
  size_t Read(void* into, size_t count) override {
    const size_t got = std::min(count, bytes_.size() - at_);
    if (got) std::memcpy(into, bytes_.data() + at_, got);
    at_ += got;
    return got;
  }

 private:
  const Bytes& bytes_;
  size_t at_ = 0;
};

// Takes up to `room` bytes.
class MemorySink final : public ByteSink {
 public:
  explicit MemorySink(size_t room = SIZE_MAX) : room_(room) {}
  bool Write(const void* from, size_t count) override {
    if (count > room_ - bytes.size()) return false;
    const auto* first = static_cast<const uint8_t*>(from);
    bytes.insert(bytes.end(), first, first + count);
    return true;
  }
  Bytes bytes;

 private:
  size_t room_;
};

Bytes Hex(std::string_view text) {
  Bytes bytes;
  std::string digits;
  for (char c : text) {
    if (c != ' ') digits += c;
  }
  for (size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes.push_back(static_cast<uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
  }
  return bytes;
}

PersistedItem Number(VarType type, uint32_t number) {
  PersistedItem item;
  item.type = type;
  item.number = number;
  return item;
}
PersistedItem Text(std::u16string text) {
  PersistedItem item;
  item.type = vt::kBstr;
  item.text = std::move(text);
  return item;
}
PersistedItem NullText() {
  PersistedItem item = Text(u"");
  item.nullText = true;
  return item;
}
PersistedItem Object(const Guid& id, Bytes bytes) {
  PersistedItem item;
  item.type = vt::kDispatch;
  item.classId = id;
  item.object = std::move(bytes);
  return item;
}

const Bytes kFontBytes = Hex("01 8000 00 9001 905F0100 02 4142");
const Bytes kPictureBytes = Hex("6C740000 04000000 FFD8FF01");

constexpr PersistRow kOne[] = {{"Item", 1}};
constexpr PersistRow kExtentOnly[] = {kCx, kCy};

std::optional<std::vector<PersistedItem>> Read(const Bytes& bytes,
                                               std::span<const PersistRow> map) {
  MemorySource source(bytes);
  return ReadItems(source, map);
}

struct LayoutCase {
  const char* what;
  PersistedItem item;
  const char* bytes;  // after the version
};

const LayoutCase kLayouts[] = {
    {"flag", Number(vt::kBool, 0xFFFF), "0B00 FFFF"},
    {"short", Number(vt::kI2, 0x8001), "0200 0180"},
    {"long", Number(vt::kI4, 0x12345678), "0300 78563412"},
    {"colour", Number(vt::kUI4, 0x80000005), "1300 05000080"},
    {"text", Text(u"Aあ"), "0800 06000000 4100 4230 0000"},
    {"empty text", Text(u""), "0800 02000000 0000"},
    {"null text", NullText(), "0800 00000000"},
    {"no object", Object({}, {}), "0900 00000000000000000000000000000000"},
    {"font", Object(kFontClass, kFontBytes),
     "0900 0352E30B918FCE119DE300AA004BB851 01 8000 00 9001 905F0100 02 4142"},
    {"picture", Object(kPictureClass, kPictureBytes),
     "0900 0452E30B918FCE119DE300AA004BB851 6C740000 04000000 FFD8FF01"},
};

TEST(PersistStream, EachKindOfItemHasItsLayout) {
  for (const LayoutCase& row : kLayouts) {
    SCOPED_TRACE(row.what);
    const Bytes expected = Hex("000E0000" + std::string(row.bytes));
    MemorySink sink;
    EXPECT_TRUE(WriteItems(sink, kOne, {&row.item, 1}));
    EXPECT_EQ(sink.bytes, expected);
    const auto read = Read(expected, kOne);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->front(), row.item);
  }
}

TEST(PersistStream, AnItemCutAnywhereIsNone) {
  for (const LayoutCase& row : kLayouts) {
    const Bytes whole = Hex("000E0000" + std::string(row.bytes));
    for (size_t length = 0; length < whole.size(); ++length) {
      EXPECT_FALSE(Read({whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length)}, kOne))
          << row.what << " cut at " << length;
    }
  }
}

struct RefusedCase {
  const char *what, *bytes;
};

TEST(PersistStream, WhatNoControlWritesIsRefused) {
  const RefusedCase cases[] = {
      {"type of nothing", "0000"},
      {"type of an error", "0A00 00000000"},
      {"double", "0500 0000000000000000"},
      {"unknown object", "0D00 00000000000000000000000000000000"},
      {"array", "0320 00000000"},
      {"by reference", "0240 0000"},
      {"text of an odd count", "0800 03000000 410000"},
      {"text without its end", "0800 04000000 4100 4200"},
      {"text as long as memory", "0800 FEFFFFFF 4100"},
      {"object of another class", "0900 0352E30B918FCE119DE300AA004BB852 00"},
      {"font whose name is cut",
       "0900 0352E30B918FCE119DE300AA004BB851 01 8000 00 9001 905F0100 FF 41"},
      {"picture of another kind", "0900 0452E30B918FCE119DE300AA004BB851 6C740001 00000000"},
      {"picture as long as memory", "0900 0452E30B918FCE119DE300AA004BB851 6C740000 FFFFFFFF 00"},
  };
  for (const RefusedCase& row : cases) {
    EXPECT_FALSE(Read(Hex("000E0000" + std::string(row.bytes)), kOne)) << row.what;
  }
}

TEST(PersistStream, NewerVersionsAreRefusedAndOlderOnesRead) {
  const struct {
    const char* version;
    bool reads;
  } cases[] = {{"000E0000", true},  {"FF0D0000", true},  {"00000000", true},
               {"010E0000", false}, {"000E0100", false}, {"FFFFFFFF", false}};
  for (const auto& row : cases) {
    const Bytes bytes = Hex(row.version + std::string("0A000000 14000000"));
    EXPECT_EQ(Read(bytes, kExtentOnly).has_value(), row.reads) << row.version;
  }
  EXPECT_FALSE(Read(Hex("000E00"), kExtentOnly));
}

TEST(PersistStream, TheExtentIsRaw) {
  const auto items = Read(Hex("000E0000 D4300000 FFFFFFFF"), kExtentOnly);
  ASSERT_TRUE(items);
  EXPECT_EQ((*items)[0].number, 0x30D4u);
  EXPECT_EQ((*items)[1].number, 0xFFFFFFFFu);
}

TEST(PersistStream, WhatFollowsTheLastItemIsLeft) {
  Bytes bytes = Hex("000E0000 01000000 02000000 AB");
  MemorySource source(bytes);
  EXPECT_TRUE(ReadItems(source, kExtentOnly));
  uint8_t next = 0;
  EXPECT_EQ(source.Read(&next, 1), 1u);
  EXPECT_EQ(next, 0xAB);
}

TEST(PersistStream, AFullSinkFailsTheWriteWhereverItFills) {
  for (const LayoutCase& row : kLayouts) {
    const size_t whole = Hex("000E0000" + std::string(row.bytes)).size();
    for (size_t room = 0; room < whole; ++room) {
      MemorySink sink(room);
      EXPECT_FALSE(WriteItems(sink, kOne, {&row.item, 1})) << row.what << " " << room;
    }
  }
  MemorySink sink;
  const PersistedItem two[] = {Number(vt::kI2, 1), Number(vt::kI2, 2)};
  EXPECT_FALSE(WriteItems(sink, kOne, two)) << "more items than rows";
}

}  // namespace
}  // namespace qrn::ole
