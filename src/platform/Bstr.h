// Strings as automation hands them over: a 4-byte length in bytes in front of the text, two zero
// bytes behind it. On Windows they are BSTRs of the system; natively the same layout on the plain
// heap, so that tests read them alike.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qrn {

using BstrText = char16_t*;

// A string of UTF-16 units. The caller frees it; null without memory.
[[nodiscard]] BstrText AllocateBstr(std::u16string_view wide) noexcept;

// The same from plain text (platform/PlainText.h), widened where it stands in the end.
[[nodiscard]] BstrText AllocatePlainBstr(std::string_view plain) noexcept;

// A byte string in a wide string's clothes: room for as many UTF-16 units as `bytes` has bytes, the
// bytes at its start, the length prefix their count. The rest is zero. Null without memory.
[[nodiscard]] BstrText AllocateByteBstr(std::string_view bytes) noexcept;

// Null is allowed.
void FreeBstr(BstrText text) noexcept;

// What the prefix says; 0 for null.
uint32_t BstrByteLength(const char16_t* text) noexcept;

// Allocates room for `units` UTF-16 units with prefix and terminator, null when it cannot.
using BstrAllocator = BstrText (*)(size_t units);

// Puts another allocator in its place, to provoke what happens without memory; null brings the real
// one back. Returns what stood there.
BstrAllocator ReplaceBstrAllocator(BstrAllocator allocator) noexcept;

}  // namespace qrn
