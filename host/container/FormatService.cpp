#include "host/container/FormatService.h"

#include <algorithm>
#include <vector>

#include "com/Variant.h"

namespace qrn::host {
namespace {

// The system's limit for a format in its tokens, in bytes.
constexpr int kMostTokenBytes = 2048;

// Fills `out` with the end that fits, the NUL included.
USHORT CopyOut(std::wstring_view text, void* buffer, USHORT bufferBytes) noexcept {
  const size_t room = bufferBytes / sizeof(wchar_t) - 1;
  const size_t length = std::min(text.size(), room);
  auto* out = static_cast<wchar_t*>(buffer);
  text.copy(out, length);
  out[length] = L'\0';
  return static_cast<USHORT>(length * sizeof(wchar_t));
}

}  // namespace

HRESULT FormatValue(const VARIANT& value, const std::wstring& format, LCID locale,
                    int firstDayOfWeek, int firstWeekOfYear, std::wstring* out) noexcept {
  return Guard([&]() -> HRESULT {
    out->clear();
    std::vector<BYTE> tokens(kMostTokenBytes);
    int used = 0;
    std::wstring text = format;
    com::Check(VarTokenizeFormatString(text.data(), tokens.data(), kMostTokenBytes, firstDayOfWeek,
                                       firstWeekOfYear, locale, &used));
    com::Bstr dressed;
    com::Check(VarFormatFromTokens(const_cast<VARIANT*>(&value), text.data(), tokens.data(), 0,
                                   dressed.put(), locale));
    *out = dressed.view();
    return S_OK;
  });
}

STDMETHODIMP FormatService::Format(VARIANT* value, BSTR format, void* buffer, USHORT bufferBytes,
                                   LONG locale, SHORT firstDayOfWeek, USHORT firstWeekOfYear,
                                   USHORT* written) {
  if (!value || !buffer) return E_POINTER;
  if (bufferBytes < sizeof(wchar_t)) return E_INVALIDARG;
  return Guard([&]() -> HRESULT {
    std::wstring text;
    const std::wstring pattern(format ? format : L"", SysStringLen(format));
    com::Check(FormatValue(*value, pattern, static_cast<LCID>(locale), firstDayOfWeek,
                           firstWeekOfYear, &text));
    const USHORT size = CopyOut(text, buffer, bufferBytes);
    if (written) *written = size;
    return S_OK;
  });
}

}  // namespace qrn::host
