// Bytes as tests write and read them: hex texts, texts of a fixed width, numbers, specifications.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace btrieve::test {

using Bytes = std::vector<uint8_t>;

// "01 2A ff" and "012aff" alike; anything but hex digits separates.
Bytes Hex(std::string_view text);
// The text, cut or filled to `width` bytes.
Bytes Padded(std::string_view text, size_t width, char fill = ' ');
// "012aff"
std::string ToHex(const Bytes& bytes);
// The parts between separators; none for an empty text.
std::vector<std::string> Split(const std::string& text, char separator);

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

Bytes SegmentBytes(const Seg& segment);
// A whole block: the number of keys is that of the segments that no other follows.
Bytes CreateBlock(const Head& head, const std::vector<Seg>& segments, const Bytes& sequences = {});

// Records of two numbers, the first of which is the only key and has duplicates.
inline Bytes PairBlock() { return CreateBlock({.recordLength = 8}, {{.flags = 0x102, .type = 1}}); }
inline Bytes Pair(int32_t id, int32_t value = 0) { return Number(id) + Number(value); }
// A collating sequence that turns the order of all byte values round.
Bytes ReversingSequence();

}  // namespace btrieve::test
