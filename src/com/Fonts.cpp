#include "com/Fonts.h"

#include <olectl.h>

#include <cmath>

#include "com/Guard.h"
#include "com/Object.h"

namespace qrn::com {

Com<IFontDisp> MakeFont(const FontDescription& description) {
  constexpr double kUnitsPerPoint = 10'000;  // of CY
  std::wstring name = description.name;
  FONTDESC wanted{};
  wanted.cbSizeofstruct = sizeof wanted;
  wanted.lpstrName = name.data();
  wanted.cySize.int64 = std::llround(description.points * kUnitsPerPoint);
  wanted.sWeight = description.weight;
  wanted.sCharset = description.charset;
  wanted.fItalic = description.italic;
  wanted.fUnderline = description.underline;
  wanted.fStrikethrough = description.strikethrough;
  Com<IFontDisp> font;
  Check(OleCreateFontIndirect(&wanted, __uuidof(IFontDisp), font.putVoid()));
  return font;
}

FontInUse::FontInUse(const Com<IFontDisp>& font) noexcept : font_(Query<IFont>(font)) {
  if (!font_ || FAILED(font_->get_hFont(&handle_))) return;
  if (FAILED(font_->AddRefHfont(handle_))) handle_ = nullptr;
}

FontInUse::~FontInUse() {
  if (handle_) font_->ReleaseHfont(handle_);
}

class FontWatch::Sink final : public Object<IPropertyNotifySink> {
 public:
  explicit Sink(std::function<void()> changed) : changed_(std::move(changed)) {}
  void Detach() noexcept { changed_ = nullptr; }

  STDMETHODIMP OnChanged(DISPID) override {
    const Com<IUnknown> alive(this);
    return Guard([&] {
      const auto changed = changed_;  // who is told may let the watch go
      if (changed) changed();
      return S_OK;
    });
  }
  STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

 private:
  std::function<void()> changed_;
};

FontWatch::FontWatch(std::function<void()> changed) : sink_(Make<Sink>(std::move(changed))) {}

FontWatch::~FontWatch() {
  sink_->Detach();
  Watch(nullptr);
}

void FontWatch::Watch(IFontDisp* font) noexcept {
  if (point_) point_->Unadvise(cookie_);
  point_.reset();
  const auto container = Query<IConnectionPointContainer>(font);
  if (!container) return;
  if (FAILED(container->FindConnectionPoint(__uuidof(IPropertyNotifySink), point_.put()))) return;
  if (FAILED(point_->Advise(sink_.get(), &cookie_))) point_.reset();
}

void FontHolder::ApplyTo(HWND window) {
  FontInUse next(font_);
  if (window) SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(next.get()), TRUE);
  inUse_ = std::move(next);
}

}  // namespace qrn::com
