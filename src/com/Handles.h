// Owners of what the system hands out. Whatever must be closed, deleted or put back is held by one
// of these; nothing else in the tree calls the closing functions.
#pragma once

#include <windows.h>

#include <utility>

namespace qrn::com {

// Holds one handle of type H and closes it with `Close` at scope end. Moves, never copies. A zero
// handle is none; handles that use -1 for none must not be held here.
template <class H, auto Close>
class Held {
 public:
  Held() noexcept = default;
  explicit Held(H handle) noexcept : handle_(handle) {}
  Held(Held&& other) noexcept : handle_(other.release()) {}
  Held& operator=(Held&& other) noexcept {
    reset(other.release());
    return *this;
  }
  ~Held() { reset(); }

  H get() const noexcept { return handle_; }
  explicit operator bool() const noexcept { return handle_ != H{}; }

  // For out parameters: what was held is closed first.
  H* put() noexcept {
    reset();
    return &handle_;
  }
  // Gives the handle away: the caller closes it.
  [[nodiscard]] H release() noexcept { return std::exchange(handle_, H{}); }
  void reset(H handle = H{}) noexcept {
    H old = std::exchange(handle_, handle);
    if (old != H{} && old != handle) Close(old);
  }

 private:
  H handle_ = H{};
};

using Brush = Held<HBRUSH, &DeleteObject>;
using Pen = Held<HPEN, &DeleteObject>;
using Region = Held<HRGN, &DeleteObject>;
using Bitmap = Held<HBITMAP, &DeleteObject>;
using Palette = Held<HPALETTE, &DeleteObject>;
using GdiFont = Held<HFONT, &DeleteObject>;
using Metafile = Held<HMETAFILE, &DeleteMetaFile>;
using Icon = Held<HICON, &DestroyIcon>;
using Cursor = Held<HCURSOR, &DestroyCursor>;
using MemoryDc = Held<HDC, &DeleteDC>;
using Menu = Held<HMENU, &DestroyMenu>;
using Key = Held<HKEY, &RegCloseKey>;
using Library = Held<HMODULE, &FreeLibrary>;
using GlobalBlock = Held<HGLOBAL, &GlobalFree>;

// The device context of a window (null: of the screen) until scope end.
class WindowDc {
 public:
  explicit WindowDc(HWND window) noexcept : window_(window), dc_(GetDC(window)) {}
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  ~WindowDc() {
    if (dc_) ReleaseDC(window_, dc_);
  }
  HDC get() const noexcept { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

// Selects an object into a device context and puts the old one back at scope end.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) noexcept : dc_(dc), old_(SelectObject(dc, object)) {}
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;
  ~Selected() {
    if (old_) SelectObject(dc_, old_);
  }

 private:
  HDC dc_;
  HGDIOBJ old_;
};

// Drawing stays inside a rectangle until scope end.
class Clipped {
 public:
  Clipped(HDC dc, const RECT& rect) noexcept : dc_(dc), saved_(SaveDC(dc)) {
    IntersectClipRect(dc, rect.left, rect.top, rect.right, rect.bottom);
  }
  Clipped(const Clipped&) = delete;
  Clipped& operator=(const Clipped&) = delete;
  ~Clipped() { RestoreDC(dc_, saved_); }

 private:
  HDC dc_;
  int saved_;
};

// The origin of drawing lies further on by so many units of the device until scope end.
class MovedOrigin {
 public:
  MovedOrigin(HDC dc, int x, int y) noexcept : dc_(dc) { OffsetViewportOrgEx(dc, x, y, &before_); }
  MovedOrigin(const MovedOrigin&) = delete;
  MovedOrigin& operator=(const MovedOrigin&) = delete;
  ~MovedOrigin() { SetViewportOrgEx(dc_, before_.x, before_.y, nullptr); }

 private:
  HDC dc_;
  POINT before_{};
};

// BeginPaint to EndPaint.
class Paint {
 public:
  explicit Paint(HWND window) noexcept : window_(window) { BeginPaint(window, &paint_); }
  Paint(const Paint&) = delete;
  Paint& operator=(const Paint&) = delete;
  ~Paint() { EndPaint(window_, &paint_); }
  HDC dc() const noexcept { return paint_.hdc; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
};

}  // namespace qrn::com
