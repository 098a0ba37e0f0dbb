#include "com/Text.h"

#include "platform/CodePage.h"
#include "platform/Utf.h"

namespace qrn::com {

std::wstring Wide(std::string_view utf8) { return std::wstring(AsWide(Utf8ToUtf16(utf8))); }

std::string Utf8(std::wstring_view wide) { return Utf16ToUtf8(AsUtf16(wide)); }

std::string NarrowText(const Bstr& text) { return Utf16ToCodePage(AsUtf16(text.view())); }

Bstr WidenToBstr(std::string_view bytes) { return Bstr(AsWide(CodePageToUtf16(bytes))); }

}  // namespace qrn::com
