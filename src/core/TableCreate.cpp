// The create specification: 16 bytes for the file, then 16 for each key segment.
#include <algorithm>
#include <memory>

#include "core/Dictionary.h"
#include "core/Gateway.h"
#include "core/MemoryFailure.h"
#include "core/ReturnCodes.h"
#include "core/Table.h"
#include "fields/LittleEndian.h"
#include "fields/Messages.h"
#include "platform/BtrCall.h"
#include "platform/CodePage.h"
#include "platform/Memory.h"

namespace qrn {
namespace {

constexpr size_t kSpecSize = 16;
constexpr uint16_t kPageSize = 4096;

// Where a field stands in the file's and in a segment's specification.
enum FileSpecAt : size_t {
  kRecordLengthAt = 0,
  kPageSizeAt = 2,
  kKeyCountAt = 4,
  kFileFlagsAt = 10
};
enum KeySpecAt : size_t {
  kPositionAt = 0,  // counted from 1
  kLengthAt = 2,
  kFlagsAt = 4,
  kTypeAt = 10,
  kNullValueAt = 11,
};

void StoreShort(std::span<uint8_t> spec, size_t at, int32_t value) {
  StoreLittle(spec.subspan(at), static_cast<uint16_t>(value));
}

int32_t CountKeys(std::span<const DbSegmentInfo> segments) {
  return static_cast<int32_t>(std::count_if(
      segments.begin(), segments.end(),
      [](const DbSegmentInfo& segment) { return (segment.Flags & kSegmentContinues) == 0; }));
}

struct FixedPart {
  int32_t length;
  bool variable;
};

// Up to the first field of variable length, counted by sizes; the whole record without one.
FixedPart FixedPartOf(const DbTableInfo& table) {
  int32_t sum = 0;
  for (int32_t i = 0; i < table.FieldCount; ++i) {
    const DbFieldInfo& field = table.Fields[i];
    if (field.Type == kNote || field.Type == kLVar) return {sum, true};
    sum += field.Size;
  }
  return {table.RecordLength, false};
}

void WriteFileSpec(const DbEngine& engine, const DbTableInfo& table, int32_t keyCount,
                   std::span<uint8_t> spec) {
  const FixedPart fixedPart = FixedPartOf(table);
  StoreShort(spec, kRecordLengthAt, fixedPart.length);
  StoreShort(spec, kPageSizeAt, kPageSize);
  StoreShort(spec, kKeyCountAt, keyCount);
  StoreShort(spec, kFileFlagsAt, engine.FileFlag + (fixedPart.variable ? 1 : 0));
}

void WriteKeySpec(const DbEngine& engine, const DbSegmentInfo& segment, std::span<uint8_t> spec) {
  StoreShort(spec, kPositionAt, segment.Offset + 1);
  StoreShort(spec, kLengthAt, segment.Size);
  StoreShort(spec, kFlagsAt, segment.Flags);
  spec[kTypeAt] = static_cast<uint8_t>(segment.Type);
  spec[kNullValueAt] = engine.NullKeyValue;
}

void WriteSpecs(const DbEngine& engine, const DbTableInfo& table, std::span<uint8_t> specs) {
  const std::span segments(table.Segments, static_cast<size_t>(table.SegmentCount));
  WriteFileSpec(engine, table, CountKeys(segments), specs);
  for (const DbSegmentInfo& segment : segments) {
    specs = specs.subspan(kSpecSize);
    WriteKeySpec(engine, segment, specs);
  }
}

Status CreateFile(const char* path, std::span<uint8_t> specs) {
  uint8_t scratchBlock[kPosBlockSize] = {};
  char key[kFilePathSize];
  CopyText(key, path);
  auto length = static_cast<uint32_t>(specs.size());
  return BtrCall(kOpCreate, scratchBlock, specs.data(), &length, key, 0, 0);
}

}  // namespace

Status DbTableCreateIn(DbEngine& engine, DbTableInfo& table, const char* directory) noexcept {
  if (!HasPlace(table, directory)) return kNoShortPath;
  char path[kFilePathSize];
  DbResolveFileName(table, directory, path);
  return DbTableCreate(engine, table, path);
}

Status DbTableCreate(DbEngine& engine, DbTableInfo& table, const char* path) noexcept {
  if (table.Fields == nullptr) {
    if (const Status status = DbDictLoadTable(engine.Settings, table); status != 0) return status;
  }
  const size_t size = kSpecSize * (static_cast<size_t>(table.SegmentCount) + 1);
  const std::unique_ptr<void, MemoryDeleter> memory(AllocateZeroed(size));
  if (memory == nullptr) {
    ReportMemoryFailure();
    return kFailure;
  }
  const std::span specs(static_cast<uint8_t*>(memory.get()), size);
  WriteSpecs(engine, table, specs);
  const Status status = CreateFile(path, specs);
  if (status != 0) ShowMessage(kVE007, static_cast<int>(status));
  return status;
}

}  // namespace qrn
