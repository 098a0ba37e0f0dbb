// The files that a picture control shows. Which kind a file is follows from its name; what it holds
// is believed only where its sizes, offsets and records lie inside its bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace qrn {

enum class PictureFileKind { None, Bitmap, Icon, Metafile };

// By the last four bytes of a name, letters without case: ".bmp", ".ico", ".wmf"; None for others.
// A name of less than five bytes is taken for a bitmap's.
PictureFileKind PictureFileKindOf(std::string_view name) noexcept;

// A bitmap file of 1, 4, 8, 24 or 32 bits a pixel.
struct BitmapFile {
  // A header of 40 bytes whose counts say what is there, and the colour table: 4 bytes a colour,
  // blue, green, red and one without use.
  std::vector<uint8_t> info;
  size_t colors = 0;
  std::span<const uint8_t> rows;  // in the file's bytes
};
// Nothing for bytes that are no such file.
std::optional<BitmapFile> ReadBitmapFile(std::span<const uint8_t> file);

// True for an icon file whose images all lie inside it.
bool IsIconFile(std::span<const uint8_t> file) noexcept;

enum class MetafileFault {
  None,
  Unreadable,    // too short for a key, or what follows is no whole metafile
  PlaceableCut,  // placeable, without a whole header
  TooLarge,      // names a size that no memory holds
};
struct MetafileFile {
  MetafileFault fault = MetafileFault::None;
  std::span<const uint8_t> bits;  // in the file's bytes: header and records; none with a fault
};
// A placeable metafile (key 0x9AC6CDD7) or a plain one. Kept so: the bits of a placeable one begin
// at byte 36, not behind the 22 bytes of its published header, and at most 65,534 of them are read.
MetafileFile ReadMetafileFile(std::span<const uint8_t> file) noexcept;

}  // namespace qrn
