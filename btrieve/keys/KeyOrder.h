// One key of one file, compiled for speed: the ordered bytes of a record's or a caller's key value,
// the raw value as callers see it, and whether a record is left out of the key for being null.
// Nothing here allocates after construction; everything is const and may be shared by threads.
//
// Ordered bytes have one fixed length a key, so that anything may be appended (the number that
// orders duplicates) and memcmp of the whole is still the order. Two values that collate alike
// ("Ab" and "AB" under case folding, 0 and minus 0) have the same ordered bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "btrieve/keys/KeySpec.h"

namespace btrieve {

// The most ordered bytes a key can have; buffers of this size take any key's.
inline constexpr size_t kMaxOrderedSize = 255 + 119;
// The most raw bytes a key value can have.
inline constexpr size_t kMaxKeyLength = 255;

class KeyOrder {
 public:
  // `key` must be one of `file`; both may go away afterwards.
  KeyOrder(const FileSpec& file, const KeySpec& key);
  KeyOrder(KeyOrder&&) noexcept = default;
  KeyOrder& operator=(KeyOrder&&) noexcept = default;

  size_t OrderedSize() const noexcept { return orderedSize_; }
  size_t KeyLength() const noexcept { return keyLength_; }

  // Writes OrderedSize() bytes. `record` has at least the file's fixed length, `key` KeyLength().
  void OrderRecord(const uint8_t* record, uint8_t* out) const noexcept;
  void OrderKey(const uint8_t* key, uint8_t* out) const noexcept;

  // Copies the raw value out of a record: KeyLength() bytes.
  void CopyKey(const uint8_t* record, uint8_t* out) const noexcept;
  // True when both records hold the same raw bytes in all segments.
  bool SameRaw(const uint8_t* recordA, const uint8_t* recordB) const noexcept;

  // The record has no entry in this key: by the any-segment rule if the key has it, else by the
  // all-segments rule; a segment is null when all its bytes are its null value.
  bool LeavesOut(const uint8_t* record) const noexcept;

  // A Get Equal for this value never finds anything: it asks for null in a null-indicator segment.
  bool AsksForNull(const uint8_t* key) const noexcept;

  // For an autoincrement key (KeySpec::IsAutoIncrement).
  // The absolute value held by ordered bytes, and by a record's field.
  uint64_t AutoIncrementOf(const uint8_t* ordered) const noexcept;
  bool WantsAutoIncrement(const uint8_t* record) const noexcept;  // the field is 0
  // Puts `value` into the record; false (record untouched) when the field cannot hold it.
  bool PutAutoIncrement(uint64_t value, uint8_t* record) const noexcept;

 private:
  struct Piece {
    OrderField order;
    const uint8_t* map;  // null, the case fold, or into maps_
    uint16_t recordOffset;
    uint16_t keyOffset;
    uint16_t outOffset;
    uint16_t length;
    uint16_t outSize;
    uint8_t nullValue;
    bool descending;
    bool nullIndicator;
  };

  enum class NullRule : uint8_t { None, AllSegments, AnySegment };

  void OrderPiece(const Piece& piece, const uint8_t* field, uint8_t* out) const noexcept;

  std::vector<Piece> pieces_;
  std::vector<CollatingSequence> sequences_;
  size_t orderedSize_ = 0;
  size_t keyLength_ = 0;
  NullRule nullRule_ = NullRule::None;
};

}  // namespace btrieve
