// The companion file (.frx) of a form: pictures and long texts, each found by its offset.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qrn::form {

// A picture stands as a 32-bit size of what follows, the mark "lt\0\0", a 32-bit size of the image
// and the image file's own bytes; a control's own picture has its 16-byte class id before the mark.
// The image may be anything the system loads
// (bitmap, icon, cursor, metafile, GIF, JPEG). Nothing if the bytes
// at `offset` are not that or end early; an empty picture gives an empty view. The view lies inside
// `frxBytes`.
std::optional<std::string_view> PictureAt(std::string_view frxBytes, uint32_t offset) noexcept;

// A text stands as one length byte, or FF and a 16-bit length, then that many bytes in code page
// 932. The result is UTF-8.
std::optional<std::string> TextAt(std::string_view frxBytes, uint32_t offset);

}  // namespace qrn::form
