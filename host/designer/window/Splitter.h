// A bar between two parts of the designer's window, which moves their border by the mouse.
#pragma once

#include <windows.h>

#include <functional>

namespace qrn::designer {

class Splitter {
 public:
  // `moved` is called while the bar is dragged, with where its left edge is wanted, in pixels of
  // the parent.
  Splitter(HWND parent, std::function<void(int left)> moved);
  Splitter(const Splitter&) = delete;
  Splitter& operator=(const Splitter&) = delete;
  ~Splitter();

  HWND Window() const noexcept { return window_; }
  static int Width() noexcept;  // pixels

 private:
  void Drag(int x);
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND window_ = nullptr;
  std::function<void(int)> moved_;
  int heldAt_ = 0;  // where on the bar the mouse has it
};

}  // namespace qrn::designer
