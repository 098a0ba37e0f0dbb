// The format service of Visual Basic as a container; the toolchain's headers do not have it.
#pragma once

#include <oaidl.h>
#include <unknwn.h>

namespace qrn {

// Writes `value`, dressed by `format`, to `buffer` as UTF-16 with its NUL; `written` may be null.
struct IVBFormat : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Format(VARIANT* value, BSTR format, void* buffer, USHORT size,
                                           LONG locale, SHORT firstDayOfWeek,
                                           USHORT firstWeekOfYear, USHORT* written) = 0;
};

// On the client site of a control. `reserved` is 0.
struct IGetVBAObject : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetObject(REFIID id, void** out, DWORD reserved) = 0;
};

}  // namespace qrn

__CRT_UUID_DECL(qrn::IVBFormat, 0x9849FD60, 0x3768, 0x101B, 0x8D, 0x72, 0xAE, 0x61, 0x64, 0xFF,
                0xE3, 0xCF)
__CRT_UUID_DECL(qrn::IGetVBAObject, 0x91733A60, 0x3F4C, 0x101B, 0xA3, 0xF6, 0x00, 0xAA, 0x00, 0x34,
                0xE4, 0xE9)
