// The format service of Visual Basic as a container, which the toolchain's headers do not have.
#pragma once

#include <oaidl.h>
#include <unknwn.h>

namespace qrn::com {

// Writes `value`, dressed by `format` as Visual Basic's Format does, to `buffer` as UTF-16 with its
// NUL; `bufferBytes` is all it may take. `*written` (may be null) is the text's size in bytes.
struct IVBFormat : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Format(VARIANT* value, BSTR format, void* buffer,
                                           USHORT bufferBytes, LONG locale, SHORT firstDayOfWeek,
                                           USHORT firstWeekOfYear, USHORT* written) = 0;
};

// Offered by the site of a control. Gives IVBFormat and nothing else; `reserved` is 0.
struct IGetVBAObject : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetObject(REFIID id, void** out, DWORD reserved) = 0;
};

}  // namespace qrn::com

__CRT_UUID_DECL(qrn::com::IVBFormat, 0x9849FD60, 0x3768, 0x101B, 0x8D, 0x72, 0xAE, 0x61, 0x64, 0xFF,
                0xE3, 0xCF)
__CRT_UUID_DECL(qrn::com::IGetVBAObject, 0x91733A60, 0x3F4C, 0x101B, 0xA3, 0xF6, 0x00, 0xAA, 0x00,
                0x34, 0xE4, 0xE9)
