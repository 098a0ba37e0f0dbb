// Font objects: making them, their handles in windows, and hearing when somebody changes one.
#pragma once

#include <ocidl.h>

#include <functional>
#include <string>

#include "com/Com.h"

namespace qrn::com {

// What a new control and a form without a font have.
struct FontDescription {
  std::wstring name = L"ＭＳ Ｐゴシック";
  double points = 9;
  int16_t weight = FW_NORMAL;
  int16_t charset = SHIFTJIS_CHARSET;
  bool italic = false;
  bool underline = false;
  bool strikethrough = false;
};

// A new font object. Throws Failure.
Com<IFontDisp> MakeFont(const FontDescription& description = {});

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

// Tells `changed` of every change of the font object it watches (its size, its face), until it
// goes: a font that keeps the sink longer speaks to nobody.
class FontWatch {
 public:
  explicit FontWatch(std::function<void()> changed);
  FontWatch(const FontWatch&) = delete;
  FontWatch& operator=(const FontWatch&) = delete;
  ~FontWatch();

  // Watches this font and no other; null: none.
  void Watch(IFontDisp* font) noexcept;

 private:
  class Sink;

  Com<Sink> sink_;
  Com<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

// The font of a control: the font object, and the handle last given to a window.
class FontHolder {
 public:
  // `changed` is called when somebody changes the font object itself.
  explicit FontHolder(std::function<void()> changed) : watch_(std::move(changed)) {}

  const Com<IFontDisp>& get() const noexcept { return font_; }
  void Set(Com<IFontDisp> font) noexcept {
    font_ = std::move(font);
    watch_.Watch(font_.get());
  }
  // Gives the font to a window and keeps its handle in use; the one used before is released.
  void ApplyTo(HWND window);
  HFONT handle() const noexcept { return inUse_.get(); }

 private:
  Com<IFontDisp> font_;
  FontWatch watch_;
  FontInUse inUse_;
};

}  // namespace qrn::com
