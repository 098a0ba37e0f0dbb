// The container's format service: Visual Basic's Format on the system's own VarFormat family.
#pragma once

#include <string>

#include "com/VbFormat.h"
#include "host/container/ComObject.h"

namespace qrn::host {

// `value` dressed by `format` under `locale`; an empty format gives the value's plain text. On
// failure *out is empty and the code tells why.
HRESULT FormatValue(const VARIANT& value, const std::wstring& format, LCID locale,
                    int firstDayOfWeek, int firstWeekOfYear, std::wstring* out) noexcept;

class FormatService final : public ComObject<com::IVBFormat> {
 public:
  STDMETHODIMP Format(VARIANT* value, BSTR format, void* buffer, USHORT bufferBytes, LONG locale,
                      SHORT firstDayOfWeek, USHORT firstWeekOfYear, USHORT* written) override;
};

}  // namespace qrn::host
