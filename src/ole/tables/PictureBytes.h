// Pictures as bytes from outside. The system's reader believes what a picture says of its own size,
// and reads past its end where that is a lie: bytes go to it only after a look from here.
#pragma once

#include <cstdint>
#include <span>

namespace qrn::ole {

// True for bytes that begin as a picture of a kind that the system reads and whose sizes, offsets
// and records lie inside them:
//   bitmap file     "BM": header, palette and rows (1 to 32 bits a pixel, runs, masks)
//   icon, cursor    00 00 01 00 and 00 00 02 00: each image of the list
//   metafile        placeable or plain, and enhanced: every record up to the closing one
//   GIF, JPEG, PNG  by their signature alone: their decoders check what they read
// No bytes at all are the picture that is none, and sound.
bool IsSoundPicture(std::span<const uint8_t> bytes) noexcept;

}  // namespace qrn::ole
