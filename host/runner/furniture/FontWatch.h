// Hears when a font object changes: code may write Label1.Font.Size = 12.
#pragma once

#include <ocidl.h>

#include <functional>

#include "host/container/ComObject.h"

namespace qrn::host {

// Tells `changed` of every change of the font it watches, until it goes.
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

}  // namespace qrn::host
