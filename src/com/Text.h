// Texts between their three forms here: the system's UTF-16 as wide characters, the tables' UTF-16,
// and bytes, which are UTF-8 in programs and code page 932 in the engine.
#pragma once

#include <string>
#include <string_view>

#include "com/Bstr.h"

namespace qrn::com {

// The same units under the other type; what ends with a NUL still does.
inline std::wstring_view AsWide(std::u16string_view text) noexcept {
  return {reinterpret_cast<const wchar_t*>(text.data()), text.size()};
}
inline std::u16string_view AsUtf16(std::wstring_view text) noexcept {
  return {reinterpret_cast<const char16_t*>(text.data()), text.size()};
}

// UTF-8, and so ASCII, to wide text and back. What is no character becomes U+FFFD.
std::wstring Wide(std::string_view utf8);
std::string Utf8(std::wstring_view wide);

// A host's text as the engine compares it, and the engine's as hosts take it: code page 932, as
// platform/CodePage.h tells. A null text gives no bytes, no bytes an empty text.
std::string NarrowText(const Bstr& text);
Bstr WidenToBstr(std::string_view bytes);

}  // namespace qrn::com
