// The font of a control: the font object, and the handle last given to a window.
#pragma once

#include <ocidl.h>

#include <functional>

#include "com/Com.h"

namespace qrn::com {

// A font's handle, in use by a window until released: the font keeps it alive that long.
class FontInUse {
 public:
  FontInUse() noexcept = default;
  // Takes the handle of `font`; none if it has none.
  explicit FontInUse(const Com<IFontDisp>& font) noexcept;
  FontInUse(FontInUse&& other) noexcept
      : font_(std::move(other.font_)), handle_(std::exchange(other.handle_, nullptr)) {}
  FontInUse& operator=(FontInUse other) noexcept {
    std::swap(font_, other.font_);
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~FontInUse();

  HFONT get() const noexcept { return handle_; }

 private:
  Com<IFont> font_;
  HFONT handle_ = nullptr;
};

class FontHolder {
 public:
  // `changed` is called when somebody changes the font object itself (its size, its face).
  explicit FontHolder(std::function<void()> changed) : changed_(std::move(changed)) {}
  FontHolder(const FontHolder&) = delete;
  FontHolder& operator=(const FontHolder&) = delete;
  ~FontHolder() { Set(nullptr); }

  const Com<IFontDisp>& get() const noexcept { return font_; }
  void Set(Com<IFontDisp> font);
  // Gives the font to a window and keeps its handle in use; the one used before is released.
  void ApplyTo(HWND window);
  HFONT handle() const noexcept { return inUse_.get(); }

 private:
  class Sink;

  std::function<void()> changed_;
  Com<IFontDisp> font_;
  Com<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  FontInUse inUse_;
};

// A new font object as every control starts with it: ＭＳ Ｐゴシック, 9 points, plain, Japanese.
Com<IFontDisp> MakeDefaultFont();

}  // namespace qrn::com
