// The one dressing of text that is the system's own: everything else is the host's format service.
#pragma once

#include <cstddef>
#include <span>

namespace qrn {

// Rewrites the NUL-terminated `text` so that it ends at byte `width`: blanks in front of a shorter
// one, the last `width` bytes of a longer one, which may halve a two-byte character. A width of 0
// does nothing. The width is held to what the memory takes with its NUL.
void RightAlignToWidth(std::span<char> text, size_t width) noexcept;

}  // namespace qrn
