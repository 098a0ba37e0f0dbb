// Where a form stands while it is designed: in a window of the designer's, whose child it is.
#pragma once

#include <windows.h>

namespace qrn::host {

class FormControl;

class DesignStage {
 public:
  virtual ~DesignStage() = default;

  // What the form's window is made a child of.
  virtual HWND Window() const noexcept = 0;
  // Draws on the form's background, under what stands there.
  virtual void DrawGround(HDC dc, const RECT& area) const noexcept = 0;
  // Sets the mouse pointer over the form and its controls.
  virtual void SetPointer() noexcept = 0;
  // Somebody asks for a control's property pages.
  virtual void ShowPages(FormControl& control) = 0;
};

}  // namespace qrn::host
