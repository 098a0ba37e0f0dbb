// The create specification: BtrFileSpec, then a BtrKeySpec for each key segment.
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

constexpr uint16_t kPageSize = 4096;

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

BtrFileSpec FileSpecOf(const DbEngine& engine, const DbTableInfo& table, int32_t keyCount) {
  const FixedPart fixedPart = FixedPartOf(table);
  BtrFileSpec spec{};
  spec.recordLength = static_cast<uint16_t>(fixedPart.length);
  spec.pageSize = kPageSize;
  // Two bytes of old: what a byte does not hold goes into the version's.
  spec.keyCount = static_cast<uint8_t>(keyCount);
  spec.version = static_cast<uint8_t>(keyCount >> 8);
  spec.flags = static_cast<uint16_t>(engine.FileFlag + (fixedPart.variable ? BtrFileVariable : 0));
  return spec;
}

BtrKeySpec KeySpecOf(const DbEngine& engine, const DbSegmentInfo& segment) {
  BtrKeySpec spec{};
  spec.position = static_cast<uint16_t>(segment.Offset + 1);
  spec.length = static_cast<uint16_t>(segment.Size);
  spec.flags = static_cast<uint16_t>(segment.Flags);
  spec.type = static_cast<uint8_t>(segment.Type);
  spec.nullValue = engine.NullKeyValue;
  return spec;
}

void WriteSpecs(const DbEngine& engine, const DbTableInfo& table, std::span<uint8_t> specs) {
  const std::span segments(table.Segments, static_cast<size_t>(table.SegmentCount));
  StoreLittle(specs, FileSpecOf(engine, table, CountKeys(segments)));
  for (const DbSegmentInfo& segment : segments) {
    specs = specs.subspan(BtrSpecSize);
    StoreLittle(specs, KeySpecOf(engine, segment));
  }
}

Status CreateFile(const char* path, std::span<uint8_t> specs) {
  uint8_t scratchBlock[kPosBlockSize] = {};
  char key[kFilePathSize];
  CopyText(key, path);
  auto length = static_cast<uint32_t>(specs.size());
  return BtrCall(BtrOpCreate, scratchBlock, specs.data(), &length, key, 0, 0);
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
  const size_t size = size_t{BtrSpecSize} * (static_cast<size_t>(table.SegmentCount) + 1);
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
