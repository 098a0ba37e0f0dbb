// What the tests of the core share: messages caught, memory that runs out, tables made by hand.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "core/DbTypes.h"
#include "core/RecordBuffer.h"
#include "core/ReturnCodes.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

// Catches what would be shown while it lives.
class Messages : Pinned {
 public:
  Messages();
  ~Messages();

  // The texts since the last look as UTF-8, each followed by "; ".
  std::string Take();
};

// From its making on, the allocation number `failing` (from 0) and all after it fail.
class MemoryRunsOut : Pinned {
 public:
  explicit MemoryRunsOut(int failing);
  ~MemoryRunsOut();

  bool Happened() const;
};

// A table with fields and segments of its own, its record buffer allocated, as if open.
class OpenTable : Pinned {
 public:
  OpenTable(std::vector<DbFieldInfo> fields, std::vector<DbSegmentInfo> segments,
            int32_t recordLength);
  ~OpenTable();

  DbTableInfo& operator*() { return table_; }
  DbTableInfo* operator->() { return &table_; }

  void SetRecord(const std::string& bytes);
  std::string Record(size_t count) const;

 private:
  std::vector<DbFieldInfo> fields_;
  std::vector<DbSegmentInfo> segments_;
  DbTableInfo table_{};
};

DbFieldInfo MakeField(const char* name, int32_t type, int32_t offset, int32_t size,
                      uint16_t flags = 0, int32_t fieldId = 0);
DbSegmentInfo MakeSegment(int32_t offset, int32_t size, int32_t flags, int32_t fieldId = 0);

}  // namespace qrn::test
