// Painting for windows of forms.
#pragma once

#include <oaidl.h>
#include <olectl.h>
#include <windows.h>

#include "com/Handles.h"

namespace qrn::host {

// A colour of a form file (plain or one of the system's) as windows take it; black for one that is
// neither.
COLORREF ColourOf(OLE_COLOR colour) noexcept;

void FillWith(HDC dc, const RECT& area, OLE_COLOR colour) noexcept;

// BeginPaint to EndPaint with a bitmap between, so that nothing flickers. Draw into `dc`.
class BufferedPaint {
 public:
  explicit BufferedPaint(HWND window);
  BufferedPaint(const BufferedPaint&) = delete;
  BufferedPaint& operator=(const BufferedPaint&) = delete;
  ~BufferedPaint();

  HDC dc() const noexcept { return buffer_.get(); }
  const RECT& area() const noexcept { return area_; }  // the window's client area

 private:
  com::Paint paint_;
  RECT area_{};
  com::MemoryDc buffer_;
  com::Bitmap bitmap_;
  HGDIOBJ before_ = nullptr;
};

}  // namespace qrn::host
