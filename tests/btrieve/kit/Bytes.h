// Bytes as tests write and read them: hex texts, texts of a fixed width, numbers, specifications.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace btrieve::test {

using Bytes = std::vector<uint8_t>;

inline int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// "01 2A ff" and "012aff" alike; anything but hex digits separates.
inline Bytes Hex(std::string_view text) {
  Bytes bytes;
  bool high = true;
  for (const char c : text) {
    const int digit = HexDigit(c);
    if (digit < 0) continue;
    if (high) {
      bytes.push_back(static_cast<uint8_t>(digit << 4));
    } else {
      bytes.back() |= static_cast<uint8_t>(digit);
    }
    high = !high;
  }
  return bytes;
}
// The text, cut or filled to `width` bytes.
inline Bytes Padded(std::string_view text, size_t width, char fill = ' ') {
  Bytes bytes(text.begin(), text.begin() + std::min(width, text.size()));
  bytes.resize(width, static_cast<uint8_t>(fill));
  return bytes;
}
// "012aff"
inline std::string ToHex(const Bytes& bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}
// The parts between separators; none for an empty text.
inline std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

template <class Value>
Bytes Number(Value value) {
  Bytes bytes(sizeof value);
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

template <class Value>
Value NumberAt(const Bytes& bytes, size_t offset) {
  Value value{};
  if (offset + sizeof value <= bytes.size()) std::memcpy(&value, &bytes[offset], sizeof value);
  return value;
}

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

// The head of a Create block.
struct Head {
  uint16_t recordLength = 16;
  uint16_t pageSize = 4096;
  uint16_t flags = 0;
  uint8_t reservedPointers = 0;
  uint8_t version = 0;
};

// One segment of a Create block; `position` counts from 1.
struct Seg {
  uint16_t position = 1;
  uint16_t length = 4;
  uint16_t flags = 0x100;
  uint8_t type = 0;
  uint8_t nullValue = 0;
  uint8_t number = 0;
  uint8_t sequence = 0;
};

inline Bytes SegmentBytes(const Seg& segment) {
  return Number(segment.position) + Number(segment.length) + Number(segment.flags) +
         Number(uint32_t{0}) +
         Bytes{segment.type, segment.nullValue, 0, 0, segment.number, segment.sequence};
}
// A whole block: the number of keys is that of the segments that no other follows.
inline Bytes CreateBlock(const Head& head, const std::vector<Seg>& segments,
                         const Bytes& sequences = {}) {
  uint8_t keys = 0;
  Bytes tail;
  for (const Seg& segment : segments) {
    keys += (segment.flags & 0x10) == 0;
    tail = std::move(tail) + SegmentBytes(segment);
  }
  if (!segments.empty() && (segments.back().flags & 0x10)) ++keys;
  return Number(head.recordLength) + Number(head.pageSize) + Bytes{keys, head.version} +
         Number(uint32_t{0}) + Number(head.flags) + Bytes{head.reservedPointers, 0, 0, 0} + tail +
         sequences;
}

// Records of two numbers, the first of which is the only key and has duplicates.
inline Bytes PairBlock() { return CreateBlock({.recordLength = 8}, {{.flags = 0x102, .type = 1}}); }
inline Bytes Pair(int32_t id, int32_t value = 0) { return Number(id) + Number(value); }
// A collating sequence that turns the order of all byte values round.
inline Bytes ReversingSequence() {
  Bytes block = Padded("\xACREVERSED", 9);
  for (int i = 0; i < 256; ++i) block.push_back(static_cast<uint8_t>(255 - i));
  return block;
}

}  // namespace btrieve::test
