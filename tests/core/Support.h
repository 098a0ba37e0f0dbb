// What the tests of the core share: messages caught, memory that runs out, tables made by hand.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "core/DbTypes.h"
#include "core/RecordBuffer.h"
#include "core/ReturnCodes.h"
#include "platform/CodePage.h"
#include "platform/Memory.h"
#include "platform/MessageBox.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

// Catches what would be shown while it lives.
class Messages : Pinned {
 public:
  Messages() {
    shown_.clear();
    ReplaceShowBox([](const char* text, unsigned) {
      shown_ += CodePageToUtf8(text) + "; ";
      return kBoxOk;
    });
  }
  ~Messages() { ReplaceShowBox(nullptr); }

  // The texts since the last look as UTF-8, each followed by "; ".
  std::string Take() { return std::exchange(shown_, {}); }

 private:
  static inline std::string shown_;
};

// From its making on, the allocation number `failing` (from 0) and all after it fail.
class MemoryRunsOut : Pinned {
 public:
  explicit MemoryRunsOut(int failing) {
    left_ = failing;
    ranOut_ = false;
    ReplaceAllocate([](size_t size) -> void* {
      if (left_-- > 0) return std::calloc(1, size);
      ranOut_ = true;
      return nullptr;
    });
  }
  ~MemoryRunsOut() { ReplaceAllocate(nullptr); }

  bool Happened() const { return ranOut_; }

 private:
  static inline int left_ = 0;
  static inline bool ranOut_ = false;
};

// A table with fields and segments of its own, its record buffer allocated, as if open.
class OpenTable : Pinned {
 public:
  OpenTable(std::vector<DbFieldInfo> fields, std::vector<DbSegmentInfo> segments,
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
  ~OpenTable() { FreeRecordBuffer(table_); }

  DbTableInfo& operator*() { return table_; }
  DbTableInfo* operator->() { return &table_; }

  void SetRecord(const std::string& bytes) {
    const auto record = RecordBytes(table_);
    std::copy_n(bytes.begin(), std::min(bytes.size(), record.size()), record.begin());
  }
  std::string Record(size_t count) const {
    return {reinterpret_cast<const char*>(table_.RecordBuffer),
            std::min(count, table_.BufferAllocated)};
  }

 private:
  std::vector<DbFieldInfo> fields_;
  std::vector<DbSegmentInfo> segments_;
  DbTableInfo table_{};
};

inline DbFieldInfo MakeField(const char* name, int32_t type, int32_t offset, int32_t size,
                             uint16_t flags = 0, int32_t fieldId = 0) {
  DbFieldInfo field{};
  std::strncpy(field.Name, name, sizeof field.Name - 1);
  field.Type = type;
  field.Offset = offset;
  field.Size = size;
  field.Flags = flags;
  field.FieldId = fieldId;
  return field;
}
inline DbSegmentInfo MakeSegment(int32_t offset, int32_t size, int32_t flags, int32_t fieldId = 0) {
  DbSegmentInfo segment{};
  segment.Offset = offset;
  segment.Size = size;
  segment.Flags = flags;
  segment.FieldId = fieldId;
  return segment;
}

}  // namespace qrn::test
