#include "ole/tables/PictureBytes.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace qrn::ole {
namespace {

using Bytes = std::span<const uint8_t>;

// Little-endian numbers at an offset; the caller has made sure that they are there.
uint16_t Word(Bytes bytes, size_t at) {
  return static_cast<uint16_t>(bytes[at] | bytes[at + 1] << 8);
}
uint32_t Long(Bytes bytes, size_t at) {
  return Word(bytes, at) | static_cast<uint32_t>(Word(bytes, at + 2)) << 16;
}

bool BeginsWith(Bytes bytes, std::initializer_list<uint8_t> signature) {
  return bytes.size() >= signature.size() &&
         std::equal(signature.begin(), signature.end(), bytes.begin());
}

constexpr uint32_t kPlain = 0, kRuns8 = 1, kRuns4 = 2, kMasks = 3;  // compressions
constexpr uint32_t kCoreHeader = 12, kInfoHeader = 40;
constexpr uint64_t kMostPixels = 1 << 26;  // of runs, whose bytes say nothing of the pixels

struct Dib {
  uint64_t width = 0;
  uint64_t height = 0;
  uint16_t bits = 0;
  uint32_t compression = kPlain;
  uint64_t rowsSize = 0;  // 0: not said
  uint64_t headSize = 0;  // header, masks and palette

  uint64_t RowBytes() const { return (width * bits + 31) / 32 * 4; }
};

uint64_t Height(uint32_t written) {
  const auto height = static_cast<int32_t>(written);
  return height < 0 ? static_cast<uint64_t>(-static_cast<int64_t>(height)) : written;
}

Dib ReadCore(Bytes bytes) {
  Dib dib{Word(bytes, 4), Word(bytes, 6), Word(bytes, 10)};
  dib.headSize = kCoreHeader + (dib.bits <= 8 ? 3u << dib.bits : 0u);
  return dib;
}

Dib ReadInfo(Bytes bytes) {
  Dib dib{Long(bytes, 4), Height(Long(bytes, 8)), Word(bytes, 14), Long(bytes, 16),
          Long(bytes, 20)};
  const uint64_t colors = Long(bytes, 32);
  const uint64_t palette = colors == 0 && dib.bits <= 8 ? uint64_t{1} << dib.bits : colors;
  const bool masks = dib.compression == kMasks && Long(bytes, 0) == kInfoHeader;
  dib.headSize = Long(bytes, 0) + (masks ? 12 : 0) + palette * 4;
  // A palette longer than its pixels can name is more than the reader keeps room for.
  if (dib.bits <= 8 && palette > uint64_t{1} << dib.bits) dib.bits = 0;
  return dib;
}

bool HasKnownPixels(const Dib& dib) {
  constexpr std::array<uint16_t, 6> kBits{1, 4, 8, 16, 24, 32};
  if (std::ranges::find(kBits, dib.bits) == kBits.end()) return false;
  if (dib.width == 0 || dib.width > INT32_MAX || dib.height == 0) return false;
  switch (dib.compression) {
    case kPlain:
      return true;
    case kRuns8:
      return dib.bits == 8;
    case kRuns4:
      return dib.bits == 4;
    default:
      return dib.compression == kMasks && (dib.bits == 16 || dib.bits == 32);
  }
}

// A device-independent bitmap; its height is 0 where it is none, or its head is cut.
Dib ReadDib(Bytes bytes) {
  if (bytes.size() < kCoreHeader) return {};
  const uint32_t header = Long(bytes, 0);
  const bool known = header == kCoreHeader || (header >= kInfoHeader && header <= bytes.size());
  if (!known) return {};
  const Dib dib = header == kCoreHeader ? ReadCore(bytes) : ReadInfo(bytes);
  return HasKnownPixels(dib) && dib.headSize <= bytes.size() ? dib : Dib{};
}

bool IsSoundBitmap(Bytes bytes) {
  constexpr size_t kFileHeader = 14;
  if (bytes.size() < kFileHeader) return false;
  const Dib dib = ReadDib(bytes.subspan(kFileHeader));
  const uint64_t rows = Long(bytes, 10);
  if (dib.height == 0 || rows > bytes.size()) return false;
  const uint64_t room = bytes.size() - rows;
  if (dib.compression == kRuns8 || dib.compression == kRuns4) {
    return dib.rowsSize > 0 && dib.rowsSize <= room && dib.width <= kMostPixels &&
           dib.height <= kMostPixels / dib.width;
  }
  return dib.rowsSize <= room && dib.height <= room / dib.RowBytes();
}

bool IsPng(Bytes bytes) { return BeginsWith(bytes, {0x89, 'P', 'N', 'G'}); }

// An image of an icon: pixels, then a mask of one bit each, in one height.
bool IsSoundImage(Bytes bytes) {
  if (IsPng(bytes)) return true;
  Dib dib = ReadDib(bytes);
  if (dib.height < 2 || dib.compression != kPlain) return false;
  dib.height /= 2;
  const uint64_t maskRow = (dib.width + 31) / 32 * 4;
  return dib.height <= (bytes.size() - dib.headSize) / (dib.RowBytes() + maskRow);
}

bool IsSoundIcon(Bytes bytes) {
  constexpr size_t kHeader = 6, kEntry = 16;
  if (bytes.size() < kHeader) return false;
  const size_t count = Word(bytes, 4);
  if (count == 0 || bytes.size() < kHeader + count * kEntry) return false;
  for (size_t i = 0; i < count; ++i) {
    const uint64_t size = Long(bytes, kHeader + i * kEntry + 8);
    const uint64_t at = Long(bytes, kHeader + i * kEntry + 12);
    if (at > bytes.size() || size > bytes.size() - at) return false;
    if (!IsSoundImage(bytes.subspan(at, size))) return false;
  }
  return true;
}

// Records, each beginning with its size in units, up to the one that closes the metafile.
struct RecordForm {
  size_t sizeAt;
  size_t typeAt;
  uint32_t unit;
  uint32_t smallest;  // bytes
  uint32_t closing;
  bool wideType;
};
constexpr RecordForm kMetafileRecords{0, 4, 2, 6, 0, false};
constexpr RecordForm kEnhancedRecords{4, 0, 1, 8, 14, true};

bool AreSoundRecords(Bytes bytes, const RecordForm& form) {
  while (bytes.size() >= form.smallest) {
    const uint64_t size = uint64_t{Long(bytes, form.sizeAt)} * form.unit;
    const uint32_t type = form.wideType ? Long(bytes, form.typeAt) : Word(bytes, form.typeAt);
    if (size < form.smallest || size > bytes.size()) return false;
    if (type == form.closing) return true;
    bytes = bytes.subspan(size);
  }
  return false;
}

bool IsSoundMetafile(Bytes bytes) {
  constexpr size_t kHeader = 18;
  if (bytes.size() < kHeader || Word(bytes, 2) * 2u != kHeader) return false;
  const uint64_t size = uint64_t{Long(bytes, 6)} * 2;
  return size >= kHeader && size <= bytes.size() &&
         AreSoundRecords(bytes.first(size).subspan(kHeader), kMetafileRecords);
}

bool IsSoundPlaceable(Bytes bytes) {
  constexpr size_t kPlaceableHeader = 22;
  return bytes.size() > kPlaceableHeader && IsSoundMetafile(bytes.subspan(kPlaceableHeader));
}

bool IsSoundEnhanced(Bytes bytes) {
  constexpr size_t kHeader = 88;
  if (bytes.size() < kHeader || Long(bytes, 40) != 0x464D4520) return false;  // " EMF"
  const uint64_t size = Long(bytes, 48);
  return Long(bytes, 4) >= kHeader && size >= kHeader && size <= bytes.size() &&
         AreSoundRecords(bytes.first(size), kEnhancedRecords);
}

bool NeedsNoLook(Bytes) { return true; }

struct PictureKind {
  std::initializer_list<uint8_t> signature;
  bool (*isSound)(Bytes);
};

}  // namespace

bool IsSoundPicture(std::span<const uint8_t> bytes) noexcept {
  static constexpr PictureKind kKinds[] = {
      {{'B', 'M'}, &IsSoundBitmap},       {{0, 0, 1, 0}, &IsSoundIcon},
      {{0, 0, 2, 0}, &IsSoundIcon},       {{0xD7, 0xCD, 0xC6, 0x9A}, &IsSoundPlaceable},
      {{1, 0, 9, 0}, &IsSoundMetafile},   {{2, 0, 9, 0}, &IsSoundMetafile},
      {{1, 0, 0, 0}, &IsSoundEnhanced},   {{'G', 'I', 'F', '8'}, &NeedsNoLook},
      {{0xFF, 0xD8, 0xFF}, &NeedsNoLook}, {{0x89, 'P', 'N', 'G'}, &NeedsNoLook},
  };
  if (bytes.empty()) return true;
  for (const PictureKind& kind : kKinds) {
    if (BeginsWith(bytes, kind.signature)) return kind.isSound(bytes);
  }
  return false;
}

}  // namespace qrn::ole
