#include "examples/company/generator/CategoryPictures.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <span>
#include <vector>

#include "examples/company/generator/CompanyParts.h"

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
using Figures = std::span<const Figure>;

// A slope is a band from the left upper corner down, so many pixels to both sides.
constexpr int kSlopeWidth = 6;

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

constexpr std::array<Figures, 12> kPictures = {kPencil, kMachine, kSheets, kBowl,   kCup,  kBottle,
                                               kSweet,  kSoap,    kBroom,  kHammer, kBulb, kPot};

bool Covers(const Figure& figure, int x, int y) {
  if (x < figure.left || x >= figure.right || y < figure.top || y >= figure.bottom) return false;
  if (figure.shape == kBox) return true;
  if (figure.shape == kSlope) return std::abs(x - figure.left - (y - figure.top)) < kSlopeWidth;
  // An ellipse, in halves of pixels from the middle.
  const int width = figure.right - figure.left, height = figure.bottom - figure.top;
  const int dx = (2 * (x - figure.left) + 1 - width) * height;
  const int dy = (2 * (y - figure.top) + 1 - height) * width;
  return dx * dx + dy * dy <= width * width * height * height;
}

Colour PixelOf(Figures figures, int x, int y) {
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

constexpr uint32_t kColours = 16;

// The info header and the colours. An icon counts the rows of its mask in the height.
void PutInfo(std::string& bytes, uint32_t width, uint32_t height, uint32_t bits) {
  constexpr uint32_t kPixelsAMetre = 2835;
  for (const uint32_t value : {40U, width, height}) Put(bytes, value, 4);
  Put(bytes, 1, 2);
  Put(bytes, 4, 2);
  for (const uint32_t value : {0U, bits, kPixelsAMetre, kPixelsAMetre, kColours, 0U}) {
    Put(bytes, value, 4);
  }
  for (const uint32_t colour : kPalette) Put(bytes, colour, 4);
}

// From the lowest row up, two pixels a byte; of a picture `step` times smaller every step-th pixel.
void PutPixels(std::string& bytes, Figures figures, int step) {
  for (int y = kPictureSize - step; y >= 0; y -= step) {
    for (int x = 0; x < kPictureSize; x += 2 * step) {
      bytes.push_back(
          static_cast<char>(PixelOf(figures, x, y) << 4 | PixelOf(figures, x + step, y)));
    }
  }
}

std::string BitmapFile(Figures figures) {
  constexpr uint32_t kHeads = 14 + 40 + kColours * 4, kBits = kPictureSize * kPictureSize / 2;
  std::string bytes = "BM";
  for (const uint32_t value : {kHeads + kBits, 0U, kHeads}) Put(bytes, value, 4);
  PutInfo(bytes, kPictureSize, kPictureSize, kBits);
  PutPixels(bytes, figures, 1);
  return bytes;
}

// Half as large, and nowhere transparent.
std::string IconFile(Figures figures) {
  constexpr uint32_t kSide = kPictureSize / 2, kBits = kSide * kSide / 2, kMask = kSide * kSide / 8;
  constexpr uint32_t kImageAt = 6 + 16;
  std::string bytes;
  for (const uint32_t value : {0U, 1U, 1U}) Put(bytes, value, 2);
  for (const uint32_t value : {kSide, kSide, kColours, 0U}) Put(bytes, value, 1);
  Put(bytes, 1, 2);
  Put(bytes, 4, 2);
  Put(bytes, 40 + kColours * 4 + kBits + kMask, 4);
  Put(bytes, kImageAt, 4);
  PutInfo(bytes, kSide, 2 * kSide, kBits + kMask);
  PutPixels(bytes, figures, 2);
  bytes.append(kMask, '\0');
  return bytes;
}

// Records of a metafile, each a count of words, a function and its words.
class MetafileWriter {
 public:
  void Record(uint16_t function, const std::vector<int>& words) {
    const auto size = static_cast<uint32_t>(3 + words.size());
    longest_ = std::max(longest_, size);
    Put(records_, size, 4);
    Put(records_, function, 2);
    for (const int word : words) Put(records_, static_cast<uint32_t>(word), 2);
  }
  std::string File() const {
    constexpr uint32_t kHeader = 18, kObjects = 2;
    std::string bytes;
    for (const uint32_t value : {1U, kHeader / 2, 0x300U}) Put(bytes, value, 2);
    Put(bytes, static_cast<uint32_t>(kHeader + records_.size()) / 2, 4);
    Put(bytes, kObjects, 2);
    Put(bytes, longest_, 4);
    Put(bytes, 0, 2);
    return bytes + records_;
  }

 private:
  std::string records_;
  uint32_t longest_ = 0;
};

enum MetafileFunction : uint16_t {
  kEnd = 0x0000,
  kMapMode = 0x0103,
  kSelect = 0x012D,
  kDelete = 0x01F0,
  kWindowOrigin = 0x020B,
  kWindowExtent = 0x020C,
  kPen = 0x02FA,
  kBrush = 0x02FC,
  kPolygon = 0x0324,
  kEllipse = 0x0418,
  kRectangle = 0x041B,
};

void PutOutline(MetafileWriter& file, const Figure& figure) {
  const auto [shape, colour, left, top, right, bottom] = figure;
  if (shape != kSlope) {
    // Without a line round it a shape ends one before what it is told.
    return file.Record(shape == kBox ? kRectangle : kEllipse, {bottom + 1, right + 1, top, left});
  }
  file.Record(kPolygon, {6, left, top, left + kSlopeWidth, top, right, bottom - kSlopeWidth, right,
                         bottom, right - kSlopeWidth, bottom, left, top + kSlopeWidth});
}

void PutFigure(MetafileWriter& file, const Figure& figure) {
  constexpr int kSolid = 0, kBrushSlot = 1;
  const uint32_t bgr = kPalette[figure.colour];
  const uint32_t rgb = bgr >> 16 | (bgr & 0xFF00) | (bgr & 0xFF) << 16;
  file.Record(kBrush, {kSolid, static_cast<int>(rgb & 0xFFFF), static_cast<int>(rgb >> 16), 0});
  file.Record(kSelect, {kBrushSlot});
  PutOutline(file, figure);
  file.Record(kDelete, {kBrushSlot});
}

std::string MetafileFile(Figures figures) {
  constexpr int kStretched = 8, kNoLine = 5, kPenSlot = 0;
  MetafileWriter file;
  file.Record(kMapMode, {kStretched});
  file.Record(kWindowOrigin, {0, 0});
  file.Record(kWindowExtent, {kPictureSize, kPictureSize});
  file.Record(kPen, {kNoLine, 0, 0, 0, 0});
  file.Record(kSelect, {kPenSlot});
  PutFigure(file, {kBox, kGrey, 0, 0, kPictureSize, kPictureSize});
  PutFigure(file, {kBox, kPaperWhite, 1, 1, kPictureSize - 1, kPictureSize - 1});
  for (const Figure& figure : figures) PutFigure(file, figure);
  file.Record(kEnd, {});
  return file.File();
}

struct PictureKind {
  const char* ending;
  std::string (*write)(Figures figures);
};
constexpr std::array<PictureKind, 3> kKinds = {
    {{".bmp", &BitmapFile}, {".ico", &IconFile}, {".wmf", &MetafileFile}}};

}  // namespace

std::string CategoryPictureName(size_t category) {
  return "category" + Padded(category + 1, 2) + kKinds[category % kKinds.size()].ending;
}

std::string CategoryPicture(size_t category) {
  return kKinds[category % kKinds.size()].write(kPictures[category % kPictures.size()]);
}

}  // namespace company
