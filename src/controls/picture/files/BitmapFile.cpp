#include <algorithm>

#include "controls/picture/files/PictureFile.h"
#include "fields/LittleEndian.h"
#include "ole/tables/PictureBytes.h"

namespace qrn {
namespace {

using Bytes = std::span<const uint8_t>;

constexpr size_t kFileHeader = 14;
constexpr size_t kInfoHeader = 40;
constexpr size_t kMostColors = 256;

// Where the numbers stand in the file.
constexpr size_t kRowsAt = 10;
constexpr size_t kHeaderSize = 14;
constexpr size_t kWidth = 18;
constexpr size_t kHeight = 22;
constexpr size_t kBits = 28;
constexpr size_t kCompression = 30;
constexpr size_t kRowsSize = 34;
constexpr size_t kColorsUsed = 46;

constexpr uint32_t kPlain = 0;
constexpr uint32_t kMasks = 3;

template <class Number>
Number At(Bytes file, size_t offset) {
  return LoadLittle<Number>(file.subspan(offset));
}

uint64_t ColorCount(Bytes file) {
  const auto used = At<uint32_t>(file, kColorsUsed);
  const auto bits = At<uint16_t>(file, kBits);
  if (used != 0 || bits == 24 || bits == 32) return used;
  return uint64_t{1} << bits;
}

// Bytes of the rows: of plain ones as many as the size in pixels takes, whatever the file says.
uint64_t RowsSize(Bytes file) {
  if (At<uint32_t>(file, kCompression) != kPlain) return At<uint32_t>(file, kRowsSize);
  const int64_t height = At<int32_t>(file, kHeight);
  const uint64_t rowBits = uint64_t{At<uint32_t>(file, kWidth)} * At<uint16_t>(file, kBits);
  return (rowBits + 31) / 32 * 4 * static_cast<uint64_t>(height < 0 ? -height : height);
}

bool IsReadable(Bytes file) {
  return file.size() >= kFileHeader + kInfoHeader && file[0] == 'B' && file[1] == 'M' &&
         ole::IsSoundPicture(file) && At<uint32_t>(file, kHeaderSize) == kInfoHeader &&
         At<uint32_t>(file, kCompression) != kMasks;
}

std::vector<uint8_t> InfoOf(Bytes file, uint32_t colors, uint32_t rowsSize) {
  const Bytes source = file.subspan(kFileHeader, kInfoHeader + colors * size_t{4});
  std::vector<uint8_t> info(source.begin(), source.end());
  const std::span<uint8_t> out(info);
  StoreLittle(out.subspan(kRowsSize - kFileHeader), rowsSize);
  StoreLittle(out.subspan(kColorsUsed - kFileHeader), colors);
  return info;
}

}  // namespace

std::optional<BitmapFile> ReadBitmapFile(Bytes file) {
  if (!IsReadable(file)) return std::nullopt;
  const uint64_t colors = ColorCount(file);
  const uint64_t head = kFileHeader + kInfoHeader + colors * 4;
  if (colors > kMostColors || head > file.size()) return std::nullopt;
  const auto named = At<uint32_t>(file, kRowsAt);
  const uint64_t start = named != 0 ? named : head;
  const uint64_t size = RowsSize(file);
  if (start > file.size() || size > file.size() - start) return std::nullopt;
  return BitmapFile{InfoOf(file, static_cast<uint32_t>(colors), static_cast<uint32_t>(size)),
                    static_cast<size_t>(colors), file.subspan(start, size)};
}

bool IsIconFile(Bytes file) noexcept {
  constexpr uint8_t kIcon[] = {0, 0, 1, 0};
  return file.size() >= sizeof kIcon &&
         std::equal(std::begin(kIcon), std::end(kIcon), file.begin()) && ole::IsSoundPicture(file);
}

}  // namespace qrn
