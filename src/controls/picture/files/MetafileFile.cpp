#include <algorithm>

#include "controls/picture/files/PictureFile.h"
#include "fields/LittleEndian.h"
#include "ole/tables/PictureBytes.h"

namespace qrn {
namespace {

using Bytes = std::span<const uint8_t>;

constexpr uint32_t kPlaceableKey = 0x9AC6CDD7;
constexpr size_t kPlaceableBlock = 36;
constexpr size_t kHeader = 18;
constexpr size_t kSizeAt = 6;  // of the header, in words
constexpr uint64_t kMostBytes = 0x7FFFFFFF;

MetafileFile Faulty(MetafileFault fault) { return {fault, {}}; }

// A header of nine words; the size that it names is where the bits end.
MetafileFile Whole(Bytes bytes) {
  const bool plain = bytes.size() >= kHeader && (bytes[0] == 1 || bytes[0] == 2) && bytes[1] == 0;
  if (!plain || !ole::IsSoundPicture(bytes)) return Faulty(MetafileFault::Unreadable);
  const size_t size = LoadLittle<uint32_t>(bytes.subspan(kSizeAt)) * size_t{2};
  return {MetafileFault::None, bytes.first(size)};
}

MetafileFile Placeable(Bytes file) {
  if (file.size() < kPlaceableBlock + kHeader) return Faulty(MetafileFault::PlaceableCut);
  const Bytes rest = file.subspan(kPlaceableBlock);
  const auto words = LoadLittle<uint32_t>(rest.subspan(kSizeAt));
  if (uint64_t{words} * 2 > kMostBytes) return Faulty(MetafileFault::TooLarge);
  const auto wanted = static_cast<uint16_t>(static_cast<uint16_t>(words) * 2);
  return Whole(rest.first(std::min<size_t>(wanted, rest.size())));
}

}  // namespace

MetafileFile ReadMetafileFile(Bytes file) noexcept {
  if (file.size() < sizeof kPlaceableKey) return Faulty(MetafileFault::Unreadable);
  return LoadLittle<uint32_t>(file) == kPlaceableKey ? Placeable(file) : Whole(file);
}

}  // namespace qrn
