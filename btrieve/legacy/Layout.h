// Where things stand in a version 5 file: offsets in bytes, docs/old-data-files.md tells the whole.
#pragma once

#include <cstddef>
#include <cstdint>

#include "btrieve/system/LittleEndian.h"

namespace btrieve::legacy {

// A number of 4 bytes: two little-endian words, the high one first.
inline uint32_t LoadHighLow(const uint8_t* at) noexcept {
  return uint32_t{LoadValue<uint16_t>(at)} << 16 | LoadValue<uint16_t>(at + 2);
}
inline void StoreHighLow(uint8_t* at, uint32_t value) noexcept {
  StoreValue(at, static_cast<uint16_t>(value >> 16));
  StoreValue(at + 2, static_cast<uint16_t>(value));
}

// In place of a page's number or a slot's address.
inline constexpr uint32_t kNone = 0xFFFFFFFF;

inline constexpr uint16_t kSmallestPage = 512;  // page sizes are multiples of it
inline constexpr uint16_t kLargestPage = 4096;
inline constexpr uint16_t kVersion = 0x0400;
inline constexpr size_t kMostKeys = 24;  // and segments

// The first page.
namespace inhead {
inline constexpr size_t kPageNumber = 0x00;
inline constexpr size_t kUsage = 0x04;
inline constexpr size_t kVersion = 0x06;  // negative in a file with an owner name
inline constexpr size_t kPageSize = 0x08;
inline constexpr size_t kFirstDeleted = 0x10;
inline constexpr size_t kKeys = 0x14;
inline constexpr size_t kRecordLength = 0x16;
inline constexpr size_t kSlotLength = 0x18;
inline constexpr size_t kRecords = 0x1A;
inline constexpr size_t kLastDataPage = 0x1E;
inline constexpr size_t kPages = 0x26;
inline constexpr size_t kNeverUsed = 0x2A;  // bytes at the end of the last data page
inline constexpr size_t kOwner = 0x2E;
inline constexpr size_t kDescriptors = 0x110;
}  // namespace inhead

// A descriptor, one for each segment. What concerns the whole key counts in its first one.
namespace indescriptor {
inline constexpr size_t kSize = 30;
inline constexpr size_t kRoot = 0x00;
inline constexpr size_t kValues = 0x04;
inline constexpr size_t kFlags = 0x08;
inline constexpr size_t kKeyLength = 0x0A;
inline constexpr size_t kEntryLength = 0x0C;
inline constexpr size_t kMostEntries = 0x0E;
inline constexpr size_t kLeastEntries = 0x10;
inline constexpr size_t kPointers = 0x12;  // of duplicates, in the slot
inline constexpr size_t kOffset = 0x14;
inline constexpr size_t kLength = 0x16;
inline constexpr size_t kType = 0x1C;
inline constexpr size_t kNullValue = 0x1D;
}  // namespace indescriptor

// Every other page.
namespace inpage {
inline constexpr size_t kNumber = 0x00;
inline constexpr size_t kUsage = 0x04;
inline constexpr uint16_t kDataBit = 0x8000;  // of the usage
inline constexpr size_t kDataHead = 6;
inline constexpr size_t kEntries = 0x06;
inline constexpr size_t kRightMost = 0x08;
inline constexpr size_t kIndexHead = 12;
}  // namespace inpage

// An entry of an index page: the page of what is less, the key's bytes, the first record of the
// value, in a key with duplicates the last one too.
inline constexpr size_t kEntryChild = 4;
inline constexpr size_t kEntryRecord = 4;

// What a slot holds behind its record for each key with duplicates.
inline constexpr size_t kPointersSize = 8;  // address of the previous one, address of the next
inline constexpr size_t kPointerToNext = 4;
inline constexpr size_t kVariablePointer = 4;  // what files of variable records have beside them
inline constexpr size_t kDeletedLink = 4;

}  // namespace btrieve::legacy
