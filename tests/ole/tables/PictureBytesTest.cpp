#include "ole/tables/PictureBytes.h"
#include "tests/support/PictureSamples.h"
#include "tests/support/Test.h"

namespace qrn::ole {
namespace {

using Bytes = test::FileBytes;
using test::Add;
using test::BitmapSample;
using test::IconSample;
using test::MetafileSample;

Bytes Enhanced() {
  Bytes bytes = {1, 0, 0, 0, 88};
  bytes.resize(40);
  Add(bytes, 0x464D4520, 4);
  bytes.resize(48);
  Add(bytes, 88 + 12 + 20, 4);
  bytes.resize(88);
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
    {"monochrome", BitmapSample(3, 2, 1)},
    {"16 colours", BitmapSample(5, 5, 4)},
    {"true colour", BitmapSample(1, 1, 24)},
    {"32 bits", BitmapSample(7, 3, 32)},
    {"icon", IconSample()},
    {"icon of three", IconSample(3)},
    {"metafile", MetafileSample()},
    {"placeable", test::PlaceableSample(22)},
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
      {"rows beyond the end", BitmapSample(3, 2, 1), 10, 71, 4},
      {"header too long", BitmapSample(3, 2, 1), 14, 400, 4},
      {"header of no kind", BitmapSample(3, 2, 1), 14, 13, 4},
      {"too wide", BitmapSample(3, 2, 1), 18, 33, 4},
      {"no width", BitmapSample(3, 2, 1), 18, 0, 4},
      {"negative width", BitmapSample(3, 2, 1), 18, 0xFFFFFFFD, 4},
      {"too high", BitmapSample(3, 2, 1), 22, 3, 4},
      {"too high upside down", BitmapSample(3, 2, 1), 22, 0xFFFFFFFD, 4},
      {"highest upside down", BitmapSample(3, 2, 1), 22, 0x80000000, 4},
      {"bits of no kind", BitmapSample(3, 2, 1), 28, 2, 2},
      {"more bits", BitmapSample(3, 2, 1), 28, 32, 2},
      {"runs in one bit", BitmapSample(3, 2, 1), 30, 1, 4},
      {"unknown compression", BitmapSample(3, 2, 32), 30, 4, 4},
      {"masks in the pixels", BitmapSample(1, 1, 16), 30, 3, 4},
      {"palette too long", BitmapSample(3, 2, 1), 46, 3, 4},
      {"palette of true colour too long", BitmapSample(3, 2, 24), 46, 0x10000, 4},
      {"palette size overflows", BitmapSample(3, 2, 24), 46, 0x40000000, 4},
      {"runs that say no size", BitmapSample(3, 2, 8), 30, 1, 4},
      {"icon of none", IconSample(), 4, 0, 2},
      {"icon of two with one", IconSample(), 4, 2, 2},
      {"icon's size", IconSample(), 14, 0xFFFFFFFF, 4},
      {"icon's place", IconSample(), 18, 0xFFFFFFF0, 4},
      {"icon's height", IconSample(), 22 + 8, 64, 4},
      {"icon of one row for both", IconSample(), 22 + 8, 1, 4},
      {"icon in runs", IconSample(), 22 + 16, 1, 4},
      {"metafile's size", MetafileSample(), 6, 99, 4},
      {"metafile's header", MetafileSample(), 2, 8, 2},
      {"record of no size", MetafileSample(), 18, 0, 4},
      {"record beyond the end", MetafileSample(), 18, 99, 4},
      {"no closing record", MetafileSample(), MetafileSample().size() - 2, 1, 2},
      {"enhanced size", Enhanced(), 48, 121, 4},
      {"enhanced header", Enhanced(), 4, 80, 4},
      {"enhanced record", Enhanced(), 88 + 4, 4, 4},
  };
  for (const auto& row : cases) {
    const Bytes lying = test::With(row.bytes, row.at, row.number, row.size);
    EXPECT_FALSE(IsSoundPicture(lying)) << row.what;
  }
}

}  // namespace
}  // namespace qrn::ole
