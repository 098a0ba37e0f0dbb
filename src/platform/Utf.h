// UTF-8 and UTF-16, for the native half of the code page: Windows converts by itself.
#pragma once

#include <string>
#include <string_view>

namespace qrn {

// A byte that begins no whole, shortest-form character becomes U+FFFD.
std::u16string Utf8ToUtf16(std::string_view utf8);

// A surrogate without its partner becomes U+FFFD.
std::string Utf16ToUtf8(std::u16string_view wide);

}  // namespace qrn
