// The scroll bars of a window that shows a part of something larger.
#pragma once

#include <windows.h>

namespace qrn::designer {

class Scroller {
 public:
  explicit Scroller(HWND window) noexcept : window_(window) {}

  // How large is what is shown, in pixels; the bars come and go.
  void Fit(SIZE content) noexcept;
  // WM_HSCROLL or WM_VSCROLL. True if something moved.
  bool OnBar(int bar, WPARAM wParam) noexcept;
  // A notch of the wheel, up for a positive turn.
  bool OnWheel(int turn, bool across) noexcept;
  // Scrolls as little as brings a rectangle, counted from the content's corner, into view.
  bool Reveal(const RECT& part) noexcept;
  // The content's point in the window's corner.
  POINT origin() const noexcept { return {Position(SB_HORZ), Position(SB_VERT)}; }

 private:
  int Position(int bar) const noexcept { return GetScrollPos(window_, bar); }
  bool ScrollTo(int bar, int position) noexcept;
  SCROLLINFO Info(int bar) const noexcept;

  HWND window_;
};

}  // namespace qrn::designer
