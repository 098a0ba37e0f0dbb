#include "com/Bstr.h"

#include <new>

namespace qrn::com {

Bstr::Bstr(std::wstring_view text)
    : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
  if (!text_) throw std::bad_alloc();
}

Bstr::Bstr(const Bstr& other) : text_(Copy(other.text_).detach()) {}

Bstr Bstr::Copy(BSTR text) {
  if (!text) return Bstr();
  return Bstr(std::wstring_view(text, SysStringLen(text)));
}

}  // namespace qrn::com
