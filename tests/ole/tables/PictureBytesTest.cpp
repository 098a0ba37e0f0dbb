#include "ole/tables/PictureBytes.h"
#include "tests/support/Test.h"

namespace qrn::ole {
namespace {

using Bytes = std::vector<uint8_t>;

void Add(Bytes& bytes, uint64_t number, int size) {
  for (int i = 0; i < size; ++i) bytes.push_back(static_cast<uint8_t>(number >> (8 * i)));
}
void Set(Bytes& bytes, size_t at, uint64_t number, int size) {
  for (int i = 0; i < size; ++i)
    bytes[at + static_cast<size_t>(i)] = static_cast<uint8_t>(number >> (8 * i));
}

Bytes Dib(uint32_t width, uint32_t height, uint16_t bits) {
  Bytes bytes;
  Add(bytes, 40, 4);
  Add(bytes, width, 4);
  Add(bytes, height, 4);
  Add(bytes, 1, 2);
  Add(bytes, bits, 2);
  bytes.resize(40 + (bits <= 8 ? 4u << bits : 0u));
  return bytes;
}

Bytes Bitmap(uint32_t width, uint32_t height, uint16_t bits) {
  const Bytes dib = Dib(width, height, bits);
  Bytes bytes{'B', 'M'};
  Add(bytes, 0, 8);
  Add(bytes, 14 + dib.size(), 4);
  bytes.insert(bytes.end(), dib.begin(), dib.end());
  bytes.resize(bytes.size() + (width * bits + 31) / 32 * 4 * height);
  return bytes;
}

Bytes Icon(uint16_t count) {
  Bytes image = Dib(16, 32, 4);
  image.resize(image.size() + 16 * (8 + 4));
  Bytes bytes;
  Add(bytes, 0x00010000, 4);
  Add(bytes, count, 2);
  for (uint32_t i = 0; i < count; ++i) {
    Add(bytes, 0x1010, 8);
    Add(bytes, image.size(), 4);
    Add(bytes, 6 + count * 16u + i * image.size(), 4);
  }
  for (int i = 0; i < count; ++i) bytes.insert(bytes.end(), image.begin(), image.end());
  return bytes;
}

Bytes Metafile() {
  Bytes bytes;
  Add(bytes, 0x00090001, 4);
  Add(bytes, 0x0300, 2);
  Add(bytes, 9 + 5 + 3, 4);
  bytes.resize(18);
  Add(bytes, 5, 4);  // a record of five words
  bytes.resize(18 + 10);
  bytes[18 + 4] = 1;
  Add(bytes, 3, 4);  // the closing one
  Add(bytes, 0, 2);
  return bytes;
}

Bytes Placeable() {
  Bytes bytes;
  Add(bytes, 0x9AC6CDD7, 4);
  bytes.resize(22);
  const Bytes inner = Metafile();
  bytes.insert(bytes.end(), inner.begin(), inner.end());
  return bytes;
}

Bytes Enhanced() {
  Bytes bytes(88);
  Set(bytes, 0, 1, 4);
  Set(bytes, 4, 88, 4);
  Set(bytes, 40, 0x464D4520, 4);
  Set(bytes, 48, 88 + 12 + 20, 4);
  Add(bytes, 17, 4);
  Add(bytes, 12, 8);
  Add(bytes, 14, 4);
  Add(bytes, 20, 4);
  bytes.resize(88 + 12 + 20);
  return bytes;
}

const struct {
  const char* what;
  Bytes bytes;
} kPictures[] = {
    {"monochrome", Bitmap(3, 2, 1)},
    {"16 colours", Bitmap(5, 5, 4)},
    {"true colour", Bitmap(1, 1, 24)},
    {"32 bits", Bitmap(7, 3, 32)},
    {"icon", Icon(1)},
    {"icon of three", Icon(3)},
    {"metafile", Metafile()},
    {"placeable", Placeable()},
    {"enhanced", Enhanced()},
};

TEST(PictureBytes, WholePicturesAreSoundAndCutOnesAreNot) {
  for (const auto& row : kPictures) {
    EXPECT_TRUE(IsSoundPicture(row.bytes)) << row.what;
    for (size_t length = 1; length < row.bytes.size(); ++length) {
      EXPECT_FALSE(IsSoundPicture(std::span(row.bytes).first(length)))
          << row.what << " cut at " << length;
    }
  }
  EXPECT_TRUE(IsSoundPicture({}));
}

TEST(PictureBytes, DecodersLookForThemselves) {
  EXPECT_TRUE(IsSoundPicture(Bytes{'G', 'I', 'F', '8', '9', 'a'}));
  EXPECT_TRUE(IsSoundPicture(Bytes{0xFF, 0xD8, 0xFF, 0xE0}));
  EXPECT_TRUE(IsSoundPicture(Bytes{0x89, 'P', 'N', 'G'}));
  EXPECT_FALSE(IsSoundPicture(Bytes{'I', 'I', '*', 0}));
}

TEST(PictureBytes, SizesThatLieAreFound) {
  const struct {
    const char* what;
    Bytes bytes;
    size_t at;
    uint64_t number;
    int size;
  } cases[] = {
      {"rows beyond the end", Bitmap(3, 2, 1), 10, 71, 4},
      {"header too long", Bitmap(3, 2, 1), 14, 400, 4},
      {"header of no kind", Bitmap(3, 2, 1), 14, 13, 4},
      {"too wide", Bitmap(3, 2, 1), 18, 33, 4},
      {"no width", Bitmap(3, 2, 1), 18, 0, 4},
      {"negative width", Bitmap(3, 2, 1), 18, 0xFFFFFFFD, 4},
      {"too high", Bitmap(3, 2, 1), 22, 3, 4},
      {"too high upside down", Bitmap(3, 2, 1), 22, 0xFFFFFFFD, 4},
      {"highest upside down", Bitmap(3, 2, 1), 22, 0x80000000, 4},
      {"bits of no kind", Bitmap(3, 2, 1), 28, 2, 2},
      {"more bits", Bitmap(3, 2, 1), 28, 32, 2},
      {"runs in one bit", Bitmap(3, 2, 1), 30, 1, 4},
      {"unknown compression", Bitmap(3, 2, 32), 30, 4, 4},
      {"masks in the pixels", Bitmap(1, 1, 16), 30, 3, 4},
      {"palette too long", Bitmap(3, 2, 1), 46, 3, 4},
      {"palette of true colour too long", Bitmap(3, 2, 24), 46, 0x10000, 4},
      {"palette size overflows", Bitmap(3, 2, 24), 46, 0x40000000, 4},
      {"runs that say no size", Bitmap(3, 2, 8), 30, 1, 4},
      {"icon of none", Icon(1), 4, 0, 2},
      {"icon of two with one", Icon(1), 4, 2, 2},
      {"icon's size", Icon(1), 14, 0xFFFFFFFF, 4},
      {"icon's place", Icon(1), 18, 0xFFFFFFF0, 4},
      {"icon's height", Icon(1), 22 + 8, 64, 4},
      {"metafile's size", Metafile(), 6, 18, 4},
      {"metafile's header", Metafile(), 2, 8, 2},
      {"record of no size", Metafile(), 18, 0, 4},
      {"record beyond the end", Metafile(), 18, 9, 4},
      {"no closing record", Metafile(), 32, 1, 2},
      {"enhanced size", Enhanced(), 48, 121, 4},
      {"enhanced header", Enhanced(), 4, 80, 4},
      {"enhanced record", Enhanced(), 88 + 4, 4, 4},
  };
  for (const auto& row : cases) {
    Bytes bytes = row.bytes;
    Set(bytes, row.at, row.number, row.size);
    EXPECT_FALSE(IsSoundPicture(bytes)) << row.what;
  }
}

}  // namespace
}  // namespace qrn::ole
