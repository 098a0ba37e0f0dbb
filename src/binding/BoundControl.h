// What all controls answer alike to the binding, for the control classes to derive from:
//
//   class CQRNEdit final : public BoundControl<ole::VisibleControl, EditFace> { ... };
//   class CQRNBtn final : public BoundControl<ole::VisibleControl> { ... };
#pragma once

#include "binding/CQuorin.h"
#include "ole/Control.h"
#include "platform/CodePage.h"

namespace qrn {

// A host's text as the binding compares it; a null text stays null in the second.
inline std::string NarrowText(const com::Bstr& text) {
  const std::wstring_view wide = text.view();
  return Utf16ToCodePage({reinterpret_cast<const char16_t*>(wide.data()), wide.size()});
}
inline NullableText NarrowNullable(const com::Bstr& text) {
  if (text.null()) return std::nullopt;
  return NarrowText(text);
}
inline com::Bstr WidenToBstr(std::string_view text) {
  const std::u16string wide = CodePageToUtf16(text);
  return com::Bstr({reinterpret_cast<const wchar_t*>(wide.data()), wide.size()});
}

// `Base` is ole::Control or derived from it, `Face` CQuorin or derived from it.
template <class Base, class Face = CQuorin>
class BoundControl : public Base, public Face {
 public:
  using Base::Base;

  void Destroy() override {
    const com::Com<IUnknown> alive(&this->Outer());
    this->Retire();
  }
  std::string GetControlName() override { return NarrowText(this->AmbientName()); }
  WindowHandle GetContainerWindow() override { return this->ResolveContainerWindow(); }
};

}  // namespace qrn
