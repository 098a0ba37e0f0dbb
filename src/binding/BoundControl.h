// What all controls answer alike to the binding, for the control classes to derive from:
//
//   class CQRNEdit final : public BoundControl<ole::VisibleControl, EditFace> { ... };
//   class CQRNBtn final : public BoundControl<ole::VisibleControl> { ... };
#pragma once

#include "binding/CQuorin.h"
#include "com/Text.h"
#include "ole/Control.h"

namespace qrn {

using com::NarrowText;
using com::WidenToBstr;

// A host's text as the binding compares it; null stays null.
inline NullableText NarrowNullable(const com::Bstr& text) {
  if (text.null()) return std::nullopt;
  return NarrowText(text);
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
