// Storing Blob values behind the fixed part of a record.

#include "FieldCases.h"
#include "fields/LittleEndian.h"
#include "platform/Memory.h"

namespace qrn {
namespace {

// A record of one 4-byte key and some Blobs, in a buffer with one spare byte as an open leaves it.
class BlobTable : test::Pinned {
 public:
  explicit BlobTable(int blobs) {
    fields_.push_back(Field(kInteger, 4));
    for (int i = 0; i < blobs; ++i) fields_.push_back(Field(kBlob, 8));
    table_.Fields = fields_.data();
    table_.FieldCount = static_cast<int32_t>(fields_.size());
    table_.RecordLength = table_.BufferSize = 4 + 8 * blobs;
    table_.BufferAllocated = static_cast<size_t>(table_.BufferSize) + 1;
    table_.RecordBuffer = static_cast<uint8_t*>(AllocateZeroed(table_.BufferAllocated));
    std::memcpy(table_.RecordBuffer, "KEY!", 4);
  }
  ~BlobTable() { FreeMemory(table_.RecordBuffer); }

  // As a single write does it: the running end begins at the fixed length.
  int32_t Set(int blob, const char* text) {
    end_ = table_.RecordLength;
    return SetFromEnd(blob, text);
  }
  // As an insert does it: the running end goes on.
  int32_t SetFromEnd(int blob, const char* text) {
    return SetBlobField({}, table_, text, fields_[static_cast<size_t>(blob) + 1], At(blob), &end_);
  }
  // All values, as the record reads: "abc|de|".
  std::string Show() const {
    std::string shown;
    for (int blob = 0; blob + 1 < table_.FieldCount; ++blob) {
      char text[4096];
      const std::span<const uint8_t> record(table_.RecordBuffer, table_.BufferAllocated);
      GetFieldText({}, text, table_.RecordBuffer + At(blob), fields_[1], record);
      shown += text + std::string("|");
    }
    return shown;
  }
  void SetDescriptor(int blob, int32_t length, int32_t offset) {
    uint8_t* const bytes = table_.RecordBuffer + At(blob);
    StoreLittle(std::span(bytes, 8), length);
    StoreLittle(std::span(bytes + 4, 4), offset);
  }
  std::string Descriptor(int blob) const { return ToHex({table_.RecordBuffer + At(blob), 8}); }
  DbTableInfo& Table() { return table_; }
  int32_t end_ = 0;

 private:
  static int32_t At(int blob) { return 4 + 8 * blob; }

  std::vector<DbFieldInfo> fields_;
  DbTableInfo table_{};
};

TEST(BlobStore, NewValuesGoToTheRunningEnd) {
  BlobTable table(3);
  table.end_ = 28;
  EXPECT_EQ(table.SetFromEnd(0, "abc"), 3);
  EXPECT_EQ(table.SetFromEnd(1, ""), 0);
  EXPECT_EQ(table.SetFromEnd(2, "defg"), 4);
  EXPECT_EQ(table.Show(), "abc||defg|");
  EXPECT_EQ(table.end_, 35);
  EXPECT_EQ(table.Table().BufferSize, 35);
  EXPECT_GT(table.Table().BufferAllocated, 35u);
  EXPECT_EQ(table.Descriptor(0), "03 00 00 00 1C 00 00 00");
  EXPECT_EQ(table.Descriptor(1), "00 00 00 00 00 00 00 00");
  EXPECT_EQ(table.Descriptor(2), "04 00 00 00 1F 00 00 00");
  EXPECT_EQ(std::memcmp(table.Table().RecordBuffer, "KEY!", 4), 0);
}

TEST(BlobStore, ChangedLengthsMoveWhatLiesBehind) {
  BlobTable table(3);
  table.end_ = 28;
  for (int blob = 0; blob < 3; ++blob) table.SetFromEnd(blob, "0123456789");
  struct {
    int blob;
    const char *text, *shown;
  } const cases[] = {
      {1, "ABCDEFGHIJ", "0123456789|ABCDEFGHIJ|0123456789|"},
      {0, "grown by fifteen bytes...", "grown by fifteen bytes...|ABCDEFGHIJ|0123456789|"},
      {1, "x", "grown by fifteen bytes...|x|0123456789|"},
      {0, "", "|x|0123456789|"},
      {0, "again", "again|x|0123456789|"},
      {2, "", "again|x||"},
      {1, "", "again|||"},
      {2, "last", "again||last|"},
      {1, "mid", "again|mid|last|"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(table.Set(row.blob, row.text), static_cast<int32_t>(std::strlen(row.text)));
    EXPECT_EQ(table.Show(), row.shown) << row.blob << row.text;
    EXPECT_GT(table.Table().BufferAllocated, static_cast<size_t>(table.Table().BufferSize));
  }
  EXPECT_EQ(table.Table().BufferSize, 28 + 12);
}

TEST(BlobStore, BadDescriptorsCountAsNew) {
  const int32_t bad[][2] = {
      {-1, 12}, {5, -1}, {1000, 12}, {5, 1 << 30}, {INT32_MAX, INT32_MAX}, {INT32_MIN, INT32_MIN}};
  for (const auto& row : bad) {
    BlobTable table(2);
    table.Set(1, "kept");
    table.SetDescriptor(0, row[0], row[1]);
    EXPECT_EQ(table.Set(0, "new"), 3);
    EXPECT_EQ(table.Show(), "new|kept|") << row[0] << ' ' << row[1];
    table.SetDescriptor(0, row[0], row[1]);
    EXPECT_EQ(table.Set(0, ""), 0);
    EXPECT_EQ(table.Show(), "|kept|") << row[0] << ' ' << row[1];
    table.SetDescriptor(0, row[0], row[1]);
    EXPECT_EQ(table.Set(1, "longer"), 6);
  }
}

TEST(BlobStore, OtherFieldsAndPlacesOutsideTheBufferAreLeftAlone) {
  BlobTable table(1);
  int32_t end = 12;
  EXPECT_EQ(SetBlobField({}, table.Table(), "x", Field(kString, 8), 4, &end), 0);
  EXPECT_EQ(SetBlobField({}, table.Table(), "x", Field(kBlob, 8), 6, &end), 0);
  EXPECT_EQ(SetBlobField({}, table.Table(), "x", Field(kBlob, 8), -1, &end), 0);
  DbTableInfo closed{};
  EXPECT_EQ(SetBlobField({}, closed, "x", Field(kBlob, 8), 0, &end), 0);
  EXPECT_EQ(end, 12);
  EXPECT_EQ(table.Show(), "|");
}

TEST(BlobStore, WithoutMemoryTheRecordStays) {
  BlobTable table(2);
  table.Set(0, "first");
  table.Set(1, "second");
  const Watch watch;
  ReplaceAllocate([](size_t) -> void* { return nullptr; });
  EXPECT_EQ(table.Set(0, std::string(5000, 'x').c_str()), -1);
  ReplaceAllocate(nullptr);
  EXPECT_EQ(table.Show(), "first|second|");
  EXPECT_EQ(table.end_, table.Table().RecordLength);
  EXPECT_TRUE(watch.Boxes().starts_with("[2000 VE001 メモリ不足  Qrnutil2 ")) << watch.Boxes();
}

}  // namespace
}  // namespace qrn
