#include "Bytes.h"

#include <algorithm>
#include <sstream>

namespace btrieve::test {
namespace {

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

Bytes Hex(std::string_view text) {
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

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

Bytes Padded(std::string_view text, size_t width, char fill) {
  Bytes bytes(text.begin(), text.begin() + std::min(width, text.size()));
  bytes.resize(width, static_cast<uint8_t>(fill));
  return bytes;
}

std::string ToHex(const Bytes& bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

Bytes SegmentBytes(const Seg& segment) {
  return Number(segment.position) + Number(segment.length) + Number(segment.flags) +
         Number(uint32_t{0}) +
         Bytes{segment.type, segment.nullValue, 0, 0, segment.number, segment.sequence};
}

Bytes CreateBlock(const Head& head, const std::vector<Seg>& segments, const Bytes& sequences) {
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

Bytes ReversingSequence() {
  Bytes block = Padded("\xACREVERSED", 9);
  for (int i = 0; i < 256; ++i) block.push_back(static_cast<uint8_t>(255 - i));
  return block;
}

}  // namespace btrieve::test
