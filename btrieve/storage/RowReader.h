// The columns of a row as SQLite stores it. Inline, for scans spend most of their time here.
#pragma once

#include <cstdint>
#include <iterator>

#include "btrieve/keys/Entry.h"
#include "btrieve/pages/Sqlite.h"

namespace btrieve {

// 7 bits a byte, the high ones first, all 8 of a ninth. Throws at `end`.
inline uint64_t TakeVarint(const uint8_t*& at, const uint8_t* end) {
  if (at < end && *at < 0x80) return *at++;
  if (end - at >= 3) {  // most numbers of a row
    const uint32_t two = (at[0] & 0x7Fu) << 7 | (at[1] & 0x7Fu);
    if (at[1] < 0x80) return at += 2, two;
    if (at[2] < 0x80) return at += 3, two << 7 | at[-1];
  }
  uint64_t value = 0;
  for (int byte = 0; byte < 8; ++byte) {
    if (at >= end) ThrowDamaged();
    value = value << 7 | (*at & 0x7F);
    if (*at++ < 0x80) return value;
  }
  if (at >= end) ThrowDamaged();
  return value << 8 | *at++;
}

// Takes the columns one after the other; reading past the last one throws Failure (2), as bytes do
// that are no row.
class RowReader {
 public:
  explicit RowReader(ByteView row) : type_(row.data()), end_(row.data() + row.size()) {
    const uint64_t headerSize = TakeVarint(type_, end_);
    if (headerSize > row.size()) ThrowDamaged();
    typesEnd_ = body_ = row.data() + headerSize;
  }

  void Skip() { (void)TakeColumn(); }

  int64_t TakeNumber() {
    const Column column = TakeColumn();
    if (column.type == kZero || column.type == kOne) return column.type == kOne;
    if (column.bytes.empty() || column.type > kOne) ThrowDamaged();
    uint64_t value = column.bytes[0] & 0x80 ? UINT64_MAX : 0;
    for (const uint8_t byte : column.bytes) value = value << 8 | byte;
    return static_cast<int64_t>(value);
  }

  // Empty for a null.
  ByteView TakeBytes() {
    const Column column = TakeColumn();
    if (column.type != 0 && column.type < kFirstBytes) ThrowDamaged();
    return column.bytes;
  }

 private:
  struct Column {
    uint64_t type;
    ByteView bytes;
  };
  static constexpr uint64_t kZero = 8;
  static constexpr uint64_t kOne = 9;
  static constexpr uint64_t kFirstBytes = 12;
  static constexpr uint8_t kSizes[kFirstBytes] = {0, 1, 2, 3, 4, 6, 8, 8};

  Column TakeColumn() {
    const uint64_t type = TakeVarint(type_, typesEnd_);
    const uint64_t size = type < kFirstBytes ? kSizes[type] : (type - kFirstBytes) / 2;
    if (size > static_cast<uint64_t>(end_ - body_)) ThrowDamaged();
    const ByteView bytes(body_, static_cast<size_t>(size));
    body_ += size;
    return {type, bytes};
  }

  const uint8_t* type_;
  const uint8_t* typesEnd_;
  const uint8_t* body_;
  const uint8_t* end_;
};

}  // namespace btrieve
