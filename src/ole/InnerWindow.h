// A window that the system made for the contained one, such as the text and the list of a combo
// box. The control hears of the mouse in it as if it were over the contained window, and names it
// to screen readers.
#pragma once

#include "ole/Kit.h"

namespace qrn::ole {

class VisibleControl;

// As long as it lives, or the window does: the control must live as long as either.
class InnerWindow {
 public:
  InnerWindow(VisibleControl& control, HWND window);
  InnerWindow(const InnerWindow&) = delete;
  InnerWindow& operator=(const InnerWindow&) = delete;
  ~InnerWindow() { Leave(); }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam);
  LRESULT Dispatch(const Message& message);
  bool TellControl(Message& message);
  void Leave() noexcept;

  VisibleControl& control_;
  HWND window_;
  WNDPROC original_;
};

}  // namespace qrn::ole
