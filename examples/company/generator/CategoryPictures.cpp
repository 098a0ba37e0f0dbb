#include "examples/company/generator/CategoryPictures.h"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>

namespace company {

namespace {

enum Colour : uint8_t { kWhite, kInk, kRed, kGreen, kBlue, kYellow, kBrown, kGrey, kPaperWhite };

// Blue, green, red, unused: as the file has them.
constexpr std::array<uint32_t, 16> kPalette = {0xFFFFFF, 0x303038, 0xD04840, 0x4C9A52, 0x3F74B8,
                                               0xF0C040, 0x9A6A3C, 0xA8A8B0, 0xF6F1E4};

enum Shape : uint8_t { kBox, kDisc, kSlope };

struct Figure {
  Shape shape;
  Colour colour;
  int left, top, right, bottom;  // pixels, right and bottom not included
};

// clang-format off
constexpr Figure kPencil[] = {{kSlope, kYellow, 14, 14, 46, 46}, {kDisc, kRed, 10, 10, 22, 22}, {kDisc, kInk, 42, 42, 50, 50}};
constexpr Figure kMachine[] = {{kBox, kGrey, 12, 24, 52, 50}, {kBox, kWhite, 20, 12, 44, 24}, {kBox, kInk, 18, 42, 46, 46}, {kDisc, kGreen, 44, 28, 49, 33}};
constexpr Figure kSheets[] = {{kBox, kGrey, 20, 12, 50, 50}, {kBox, kWhite, 14, 16, 44, 54}, {kBox, kBlue, 18, 24, 40, 26}, {kBox, kBlue, 18, 32, 40, 34}, {kBox, kBlue, 18, 40, 34, 42}};
constexpr Figure kBowl[] = {{kDisc, kRed, 12, 20, 52, 60}, {kBox, kPaperWhite, 12, 12, 52, 36}, {kDisc, kWhite, 16, 20, 48, 48}, {kBox, kRed, 12, 36, 52, 42}};
constexpr Figure kCup[] = {{kDisc, kGreen, 40, 26, 56, 44}, {kDisc, kPaperWhite, 44, 30, 52, 40}, {kBox, kGreen, 14, 22, 46, 52}, {kBox, kBrown, 18, 26, 42, 30}};
constexpr Figure kBottle[] = {{kBox, kBrown, 22, 24, 42, 56}, {kBox, kBrown, 28, 12, 36, 24}, {kBox, kRed, 27, 8, 37, 13}, {kBox, kWhite, 22, 32, 42, 46}};
constexpr Figure kSweet[] = {{kSlope, kYellow, 8, 18, 26, 36}, {kSlope, kYellow, 38, 28, 56, 46}, {kDisc, kRed, 18, 18, 46, 46}, {kDisc, kPaperWhite, 26, 24, 34, 32}};
constexpr Figure kSoap[] = {{kBox, kBlue, 12, 30, 52, 50}, {kDisc, kWhite, 16, 14, 28, 26}, {kDisc, kWhite, 30, 10, 38, 18}, {kBox, kWhite, 20, 36, 44, 44}};
constexpr Figure kBroom[] = {{kBox, kBrown, 30, 6, 34, 36}, {kBox, kYellow, 20, 36, 44, 56}, {kBox, kRed, 20, 36, 44, 40}, {kBox, kInk, 28, 44, 29, 56}, {kBox, kInk, 35, 44, 36, 56}};
constexpr Figure kHammer[] = {{kBox, kBrown, 29, 22, 35, 58}, {kBox, kGrey, 14, 10, 50, 24}, {kBox, kInk, 14, 10, 20, 24}};
constexpr Figure kBulb[] = {{kDisc, kYellow, 16, 8, 48, 40}, {kBox, kGrey, 26, 38, 38, 52}, {kBox, kInk, 26, 42, 38, 44}, {kBox, kInk, 26, 47, 38, 49}};
constexpr Figure kPot[] = {{kBox, kGrey, 14, 24, 50, 52}, {kBox, kInk, 6, 28, 14, 32}, {kBox, kInk, 50, 28, 58, 32}, {kBox, kInk, 12, 20, 52, 24}, {kDisc, kRed, 28, 12, 36, 20}};
// clang-format on

constexpr std::array<std::span<const Figure>, 12> kPictures = {
    kPencil, kMachine, kSheets, kBowl, kCup, kBottle, kSweet, kSoap, kBroom, kHammer, kBulb, kPot};

bool Covers(const Figure& figure, int x, int y) {
  if (x < figure.left || x >= figure.right || y < figure.top || y >= figure.bottom) return false;
  if (figure.shape == kBox) return true;
  if (figure.shape == kSlope)
    return x - figure.left - (y - figure.top) < 6 && y - figure.top - (x - figure.left) < 6;
  // An ellipse, in halves of pixels from the middle.
  const int width = figure.right - figure.left, height = figure.bottom - figure.top;
  const int dx = (2 * (x - figure.left) + 1 - width) * height;
  const int dy = (2 * (y - figure.top) + 1 - height) * width;
  return dx * dx + dy * dy <= width * width * height * height;
}

Colour PixelOf(std::span<const Figure> figures, int x, int y) {
  const bool isFrame = x == 0 || y == 0 || x == kPictureSize - 1 || y == kPictureSize - 1;
  Colour colour = isFrame ? kGrey : kPaperWhite;
  for (const Figure& figure : figures) {
    if (Covers(figure, x, y)) colour = figure.colour;
  }
  return colour;
}

void Put(std::string& bytes, uint32_t value, int width) {
  for (int at = 0; at < width; ++at) bytes.push_back(static_cast<char>(value >> 8 * at));
}

void PutHeads(std::string& bytes) {
  constexpr uint32_t kHeads = 14 + 40, kColours = 16, kBits = kPictureSize * kPictureSize / 2;
  constexpr uint32_t kPixelsAMetre = 2835;
  bytes += "BM";
  for (const uint32_t value : {kHeads + kColours * 4 + kBits, 0U, kHeads + kColours * 4}) {
    Put(bytes, value, 4);
  }
  for (const uint32_t value : {40U, uint32_t{kPictureSize}, uint32_t{kPictureSize}}) {
    Put(bytes, value, 4);
  }
  Put(bytes, 1, 2);
  Put(bytes, 4, 2);
  for (const uint32_t value : {0U, kBits, kPixelsAMetre, kPixelsAMetre, kColours, 0U}) {
    Put(bytes, value, 4);
  }
}

}  // namespace

std::string CategoryPicture(size_t category) {
  const std::span<const Figure> figures = kPictures[category % kPictures.size()];
  std::string bytes;
  PutHeads(bytes);
  for (const uint32_t colour : kPalette) Put(bytes, colour, 4);
  for (int y = kPictureSize - 1; y >= 0; --y) {
    for (int x = 0; x < kPictureSize; x += 2) {
      bytes.push_back(static_cast<char>(PixelOf(figures, x, y) << 4 | PixelOf(figures, x + 1, y)));
    }
  }
  return bytes;
}

}  // namespace company
