// The one edit box of a grid, which stands on the current cell while cells may be edited. Its own
// messages come to the grid first (VisibleControl::OnContainedMessage).
#pragma once

#include "binding/InputMethod.h"
#include "com/Fonts.h"
#include "grid/layout/GridFrame.h"
#include "grid/layout/GridKeys.h"
#include "ole/ContainedWindow.h"

namespace qrn {

class GridEdit {
 public:
  explicit GridEdit(ole::VisibleControl& grid) noexcept : window_(grid) {}

  // Makes the box, hidden. False if the system refuses.
  bool Make(HWND parent, const com::Com<IFontDisp>& font);
  void Destroy() noexcept { window_.Destroy(); }

  HWND get() const noexcept { return window_.get(); }
  bool IsShown() const noexcept;
  bool HasFocus() const noexcept { return get() && GetFocus() == get(); }

  void SetFont(const com::Com<IFontDisp>& font);
  // Shows the box there with the text, all of it selected; it takes the keyboard. `maxBytes` 0: any
  // length. `imeMode` 0 leaves the input method alone.
  void PlaceOn(const GridRect& rect, const char* text, int32_t maxBytes, int32_t imeMode);
  void Hide() noexcept;

  std::string Text() const;  // code page 932
  EditCaret Caret() const noexcept;

  // Messages of the box, before its own procedure. True when they end there.
  bool LimitTyping(com::Message& message);
  bool LimitPasting(com::Message& message);
  bool LimitReplacing(com::Message& message);
  void FocusCame() noexcept;
  void FocusWent() noexcept;

 private:
  void ApplyInputMethod() noexcept;

  ole::ContainedWindow window_;
  com::FontInUse font_;
  int32_t maxBytes_ = 0;
  int32_t imeMode_ = 0;
  bool imeEntered_ = false;  // the mode from before the box is known, to be put back
  InputMethodOnFocus inputMethod_;
};

}  // namespace qrn
