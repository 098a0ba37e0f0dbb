// Picture files made by hand, small and right, for tests to spoil.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qrn::test {

using FileBytes = std::vector<uint8_t>;

inline void Add(FileBytes& bytes, uint64_t number, int size) {
  for (; size > 0; --size, number >>= 8) bytes.push_back(static_cast<uint8_t>(number));
}
// The bytes with another number at an offset.
inline FileBytes With(FileBytes bytes, size_t at, uint64_t number, int size) {
  for (int i = 0; i < size; ++i) {
    bytes.at(at + static_cast<size_t>(i)) = static_cast<uint8_t>(number >> (8 * i));
  }
  return bytes;
}
inline FileBytes Cut(FileBytes bytes, size_t size) {
  bytes.resize(size);
  return bytes;
}

// Rows of the colour `fill`: an index of the table, which is red, green and blue in turn, or the
// bytes of the pixels.
inline FileBytes BitmapSample(uint32_t width, uint32_t height, uint16_t bits, uint8_t fill = 0) {
  const uint32_t colors = bits <= 8 ? 1u << bits : 0;
  FileBytes bytes{'B', 'M'};
  Add(bytes, 0, 8);
  Add(bytes, 54 + colors * 4, 4);
  Add(bytes, 40, 4);
  Add(bytes, width, 4);
  Add(bytes, height, 4);
  Add(bytes, 1, 2);
  Add(bytes, bits, 2);
  Add(bytes, 0, 8);  // plain, size not said
  Add(bytes, 0, 16);
  for (uint32_t i = 0; i < colors; ++i) Add(bytes, 0xFF0000u >> (i % 3 * 8), 4);
  bytes.resize(bytes.size() + (width * bits + 31) / 32 * 4 * height, fill);
  return bytes;
}

// Images of 16 colours, 16 pixels a side.
inline FileBytes IconSample(uint16_t count = 1) {
  FileBytes image;
  Add(image, 40, 4);
  Add(image, 16, 4);
  Add(image, 32, 4);
  Add(image, 1, 2);
  Add(image, 4, 2);
  Add(image, 0, 24);
  for (uint32_t i = 0; i < 16; ++i) Add(image, 0x0000FF, 4);
  image.resize(image.size() + 16 * (8 + 4));
  FileBytes bytes{0, 0, 1, 0};
  Add(bytes, count, 2);
  for (size_t i = 0; i < count; ++i) {
    for (const uint8_t byte : {16, 16, 16, 0, 1, 0, 4, 0}) bytes.push_back(byte);
    Add(bytes, image.size(), 4);
    Add(bytes, 6 + count * 16u + i * image.size(), 4);
  }
  for (size_t i = 0; i < count; ++i) bytes.insert(bytes.end(), image.begin(), image.end());
  return bytes;
}

// A plain metafile: fills (0, 0)-(100, 100) with a colour.
inline FileBytes MetafileSample(uint32_t color = 0x0000FF) {
  FileBytes records;
  const auto add = [&](uint16_t function, std::initializer_list<uint16_t> words) {
    Add(records, 3 + words.size(), 4);
    Add(records, function, 2);
    for (const uint16_t word : words) Add(records, word, 2);
  };
  add(0x0103, {8});         // mapping: anisotropic
  add(0x020B, {0, 0});      // window origin
  add(0x020C, {100, 100});  // window extent
  add(0x02FC, {0, static_cast<uint16_t>(color), static_cast<uint16_t>(color >> 16), 0});  // brush
  add(0x012D, {0});               // select it
  add(0x041B, {100, 100, 0, 0});  // rectangle
  add(0x0000, {});
  FileBytes bytes;
  Add(bytes, 0x00090001, 4);
  Add(bytes, 0x0300, 2);
  Add(bytes, (18 + records.size()) / 2, 4);
  Add(bytes, 1, 2);  // one object
  Add(bytes, 7, 4);  // words of the longest record
  Add(bytes, 0, 2);
  bytes.insert(bytes.end(), records.begin(), records.end());
  return bytes;
}
// The same behind a placeable one's head: 36 bytes are skipped in files, 22 in stored pictures.
inline FileBytes PlaceableSample(size_t head = 36) {
  FileBytes bytes;
  Add(bytes, 0x9AC6CDD7, 4);
  bytes.resize(head);
  const FileBytes plain = MetafileSample();
  bytes.insert(bytes.end(), plain.begin(), plain.end());
  return bytes;
}

}  // namespace qrn::test
