// A caption in the contained window, and the key behind its "&". A class takes it by deriving:
//
//   class CQRNBtn final : public ole::Captioned<ole::VisibleControl> { ... };
//
// The table has the stock property Caption; kCaptionAccess binds it.
#pragma once

#include <ocidl.h>

#include "ole/VisibleControl.h"

namespace qrn::ole {

// The key behind a caption's single "&", as a container asks for it.
class Mnemonic {
 public:
  // Puts the key (Alt and the letter) into `info`, with nothing else changed; the table of keys is
  // this object's and good until the next call.
  void Tell(std::wstring_view caption, CONTROLINFO& info) noexcept;

 private:
  Held<HACCEL, &DestroyAcceleratorTable> keys_;
};

// `Base` is VisibleControl or derived from it.
template <class Base>
class Captioned : public Base {
 public:
  using Base::Base;

  Bstr Caption = Bstr::Empty();

  void OnChanged(int32_t id) override {
    Base::OnChanged(id);
    if (id == stock::kCaption) ShowCaption();
  }
  void OnFillControlInfo(CONTROLINFO& info) override { mnemonic_.Tell(Caption.view(), info); }

  // As with the mouse, the focus comes first: the control that loses it may change what the click
  // works with.
  void OnMnemonic(MSG&) override {
    if (this->Enabled == 0) return;
    const Com<IUnknown> alive(&this->Outer());
    if (this->inPlace().active()) Guard([&] { return this->inPlace().Activate(true); });
    OnMnemonicKey();
  }

 protected:
  // Its own text is its name; the label before it is, where it shows a picture alone.
  Com<IAccessible> MakeAccessible(HWND window) override {
    const HWND labelled = Caption.empty() ? this->hwnd() : nullptr;
    return Com<IAccessible>(new Accessible(window, labelled, this->AccessibleRole()));
  }
  // Does what a click does. Handlers may let the control go: the caller keeps it.
  virtual void OnMnemonicKey() = 0;

 private:
  void ShowCaption() {
    if (this->contained()) SetWindowTextW(this->contained(), Caption.c_str());
    const auto container = this->site().template As<IOleControlSite>();
    if (container) container->OnControlInfoChanged();
  }

  Mnemonic mnemonic_;
};

template <class C>
inline constexpr PropertyEntry kCaptionAccess[] = {{stock::kCaption, Field<&C::Caption>}};

}  // namespace qrn::ole
