#include "com/FontHolder.h"

#include <olectl.h>

#include "com/Guard.h"

namespace qrn::com {

FontInUse::FontInUse(const Com<IFontDisp>& font) noexcept : font_(Query<IFont>(font)) {
  if (!font_ || FAILED(font_->get_hFont(&handle_))) return;
  if (FAILED(font_->AddRefHfont(handle_))) handle_ = nullptr;
}

FontInUse::~FontInUse() {
  if (handle_) font_->ReleaseHfont(handle_);
}

// Listens to the font object. It may outlive the holder, which then clears its pointer.
class FontHolder::Sink final : public IPropertyNotifySink {
 public:
  explicit Sink(FontHolder& holder) noexcept : holder_(holder) {}

  STDMETHODIMP QueryInterface(REFIID id, void** out) override {
    if (!out) return E_POINTER;
    const bool known = id == __uuidof(IUnknown) || id == __uuidof(IPropertyNotifySink);
    *out = known ? static_cast<IPropertyNotifySink*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  STDMETHODIMP OnChanged(DISPID) override {
    return Guard([&] {
      holder_.changed_();
      return S_OK;
    });
  }
  STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

 private:
  virtual ~Sink() = default;

  FontHolder& holder_;  // unadvises before it goes
  ULONG references_ = 1;
};

void FontHolder::Set(Com<IFontDisp> font) {
  if (point_) point_->Unadvise(cookie_);
  point_.reset();
  font_ = std::move(font);
  const auto container = Query<IConnectionPointContainer>(font_);
  if (!container) return;
  if (FAILED(container->FindConnectionPoint(__uuidof(IPropertyNotifySink), point_.put()))) return;
  const auto sink = Com<Sink>::Take(new Sink(*this));
  if (FAILED(point_->Advise(sink.get(), &cookie_))) point_.reset();
}

void FontHolder::ApplyTo(HWND window) {
  FontInUse next(font_);
  if (window) SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(next.get()), TRUE);
  inUse_ = std::move(next);
}

Com<IFontDisp> MakeDefaultFont() {
  wchar_t name[] = L"ＭＳ Ｐゴシック";
  FONTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.lpstrName = name;
  description.cySize.int64 = 90000;
  description.sWeight = FW_NORMAL;
  description.sCharset = SHIFTJIS_CHARSET;
  Com<IFontDisp> font;
  Check(OleCreateFontIndirect(&description, __uuidof(IFontDisp), font.putVoid()));
  return font;
}

}  // namespace qrn::com
