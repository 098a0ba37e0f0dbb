// Ordered bytes and null rules of one key, a row of numbers and a function for each segment.
#include "btrieve/keys/KeyOrder.h"

#include <algorithm>
#include <cstring>

#include "btrieve/keys/FieldOrder.h"

namespace btrieve {
namespace {

bool IsFilled(const uint8_t* field, size_t length, uint8_t value) noexcept {
  return std::all_of(field, field + length, [value](uint8_t byte) { return byte == value; });
}

}  // namespace

KeyOrder::KeyOrder(const FileSpec& file, const KeySpec& key) : sequences_(file.sequences) {
  for (const KeySegment& segment : key.segments) {
    const KeyTypeRow* type = FindKeyType(static_cast<uint8_t>(segment.Type()));
    const uint8_t* map = segment.Has(kSequence) ? sequences_[segment.sequence].Map()
                         : segment.FoldsCase()  ? CaseFoldMap()
                                                : nullptr;
    const size_t outSize = type->orderedSize(segment.length, map != nullptr);
    pieces_.push_back({type->order, map, segment.offset, static_cast<uint16_t>(keyLength_),
                       static_cast<uint16_t>(orderedSize_), segment.length,
                       static_cast<uint16_t>(outSize), segment.nullValue, segment.Has(kDescending),
                       segment.Type() == KeyType::NullIndicator});
    keyLength_ += segment.length;
    orderedSize_ += outSize;
  }
  if (key.segments[0].Has(kNullAllSegments)) nullRule_ = NullRule::AllSegments;
  if (key.segments[0].Has(kNullAnySegment)) nullRule_ = NullRule::AnySegment;
}

void KeyOrder::OrderPiece(const Piece& piece, const uint8_t* field, uint8_t* out) const noexcept {
  out += piece.outOffset;
  piece.order(field, piece.length, piece.map, out);
  if (!piece.descending) return;
  for (size_t i = 0; i < piece.outSize; ++i) out[i] = static_cast<uint8_t>(~out[i]);
}

void KeyOrder::OrderRecord(const uint8_t* record, uint8_t* out) const noexcept {
  for (const Piece& piece : pieces_) OrderPiece(piece, record + piece.recordOffset, out);
}

void KeyOrder::OrderKey(const uint8_t* key, uint8_t* out) const noexcept {
  for (const Piece& piece : pieces_) OrderPiece(piece, key + piece.keyOffset, out);
}

void KeyOrder::CopyKey(const uint8_t* record, uint8_t* out) const noexcept {
  for (const Piece& piece : pieces_) {
    std::memcpy(out + piece.keyOffset, record + piece.recordOffset, piece.length);
  }
}

bool KeyOrder::SameRaw(const uint8_t* recordA, const uint8_t* recordB) const noexcept {
  return std::all_of(pieces_.begin(), pieces_.end(), [&](const Piece& piece) {
    return std::memcmp(recordA + piece.recordOffset, recordB + piece.recordOffset, piece.length) ==
           0;
  });
}

bool KeyOrder::LeavesOut(const uint8_t* record) const noexcept {
  if (nullRule_ == NullRule::None) return false;
  const auto isNull = [record](const Piece& piece) {
    return IsFilled(record + piece.recordOffset, piece.length, piece.nullValue);
  };
  return nullRule_ == NullRule::AnySegment ? std::any_of(pieces_.begin(), pieces_.end(), isNull)
                                           : std::all_of(pieces_.begin(), pieces_.end(), isNull);
}

bool KeyOrder::AsksForNull(const uint8_t* key) const noexcept {
  return std::any_of(pieces_.begin(), pieces_.end(), [key](const Piece& piece) {
    return piece.nullIndicator && key[piece.keyOffset] != 0;
  });
}

uint64_t KeyOrder::AutoIncrementOf(const uint8_t* ordered) const noexcept {
  uint64_t value = 0;
  for (size_t i = 0; i < orderedSize_; ++i) value = value << 8 | ordered[i];
  return value;
}

bool KeyOrder::WantsAutoIncrement(const uint8_t* record) const noexcept {
  return IsFilled(record + pieces_[0].recordOffset, pieces_[0].length, 0);
}

bool KeyOrder::PutAutoIncrement(uint64_t value, uint8_t* record) const noexcept {
  const size_t length = pieces_[0].length;
  const uint64_t highest = (uint64_t{1} << (8 * length - 1)) - 1;
  if (value > highest) return false;
  std::memcpy(record + pieces_[0].recordOffset, &value, length);
  return true;
}

}  // namespace btrieve
