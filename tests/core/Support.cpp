#include "Support.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "platform/CodePage.h"
#include "platform/Memory.h"
#include "platform/MessageBox.h"

namespace qrn::test {
namespace {

std::string shown;
int allocationsLeft = 0;
bool ranOut = false;

}  // namespace

Messages::Messages() {
  shown.clear();
  ReplaceShowBox([](const char* text, unsigned) {
    shown += CodePageToUtf8(text) + "; ";
    return kBoxOk;
  });
}

Messages::~Messages() { ReplaceShowBox(nullptr); }

std::string Messages::Take() { return std::exchange(shown, {}); }

MemoryRunsOut::MemoryRunsOut(int failing) {
  allocationsLeft = failing;
  ranOut = false;
  ReplaceAllocate([](size_t size) -> void* {
    if (allocationsLeft-- > 0) return std::calloc(1, size);
    ranOut = true;
    return nullptr;
  });
}

MemoryRunsOut::~MemoryRunsOut() { ReplaceAllocate(nullptr); }

bool MemoryRunsOut::Happened() const { return ranOut; }

OpenTable::OpenTable(std::vector<DbFieldInfo> fields, std::vector<DbSegmentInfo> segments,
                     int32_t recordLength)
    : fields_(std::move(fields)), segments_(std::move(segments)) {
  std::strcpy(table_.Name, "T");
  table_.Fields = fields_.data();
  table_.FieldCount = static_cast<int32_t>(fields_.size());
  table_.Segments = segments_.data();
  table_.SegmentCount = static_cast<int32_t>(segments_.size());
  table_.RecordLength = recordLength;
  table_.BufferSize = recordLength;
  table_.IsOpen = 1;
  if (!AllocateRecordBuffer(table_, recordLength + 1)) std::abort();
}

OpenTable::~OpenTable() { FreeRecordBuffer(table_); }

void OpenTable::SetRecord(const std::string& bytes) {
  const auto record = RecordBytes(table_);
  std::copy_n(bytes.begin(), std::min(bytes.size(), record.size()), record.begin());
}

std::string OpenTable::Record(size_t count) const {
  return {reinterpret_cast<const char*>(table_.RecordBuffer),
          std::min(count, table_.BufferAllocated)};
}

DbFieldInfo MakeField(const char* name, int32_t type, int32_t offset, int32_t size, uint16_t flags,
                      int32_t fieldId) {
  DbFieldInfo field{};
  std::strncpy(field.Name, name, sizeof field.Name - 1);
  field.Type = type;
  field.Offset = offset;
  field.Size = size;
  field.Flags = flags;
  field.FieldId = fieldId;
  return field;
}

DbSegmentInfo MakeSegment(int32_t offset, int32_t size, int32_t flags, int32_t fieldId) {
  DbSegmentInfo segment{};
  segment.Offset = offset;
  segment.Size = size;
  segment.Flags = flags;
  segment.FieldId = fieldId;
  return segment;
}

}  // namespace qrn::test
