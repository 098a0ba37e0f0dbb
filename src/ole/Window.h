// The control's own window, a child of the container's. It exists while the control is in-place
// active and shows what the control draws, or holds the contained window.
#pragma once

#include "ole/Kit.h"

namespace qrn::ole {

class Control;

class ControlWindow {
 public:
  explicit ControlWindow(Control& control) noexcept : control_(control) {}
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;
  ~ControlWindow() { Destroy(); }

  HWND get() const noexcept { return window_; }
  // Makes the window; false if the system refuses.
  bool Create(HWND parent, const RECT& place) noexcept;
  void Destroy() noexcept;
  // True if the focus is on or inside this window.
  bool HasFocus() const noexcept;
  // Moves the focus to the parent if it is here: a window that is destroyed with the focus is not
  // always told that it went.
  void GiveFocusAway() noexcept;
  // Moves it to `place` and shows only what lies in `clip`, both in the parent's pixels.
  void Move(const RECT& place, const RECT& clip) noexcept;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam);
  LRESULT Dispatch(Message& message) noexcept;
  bool ServiceMessage(Message& message);

  Control& control_;
  HWND window_ = nullptr;
};

}  // namespace qrn::ole
