#include "host/runner/furniture/FontWatch.h"

namespace qrn::host {

class FontWatch::Sink final : public ComObject<IPropertyNotifySink> {
 public:
  explicit Sink(std::function<void()> changed) : changed_(std::move(changed)) {}
  void Detach() noexcept { changed_ = nullptr; }

  STDMETHODIMP OnChanged(DISPID) override {
    return Guard([&]() -> HRESULT {
      if (changed_) changed_();
      return S_OK;
    });
  }
  STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

 private:
  std::function<void()> changed_;
};

FontWatch::FontWatch(std::function<void()> changed) : sink_(MakeCom<Sink>(std::move(changed))) {}

FontWatch::~FontWatch() {
  sink_->Detach();
  Watch(nullptr);
}

void FontWatch::Watch(IFontDisp* font) noexcept {
  if (point_) point_->Unadvise(cookie_);
  point_.reset();
  const Com<IConnectionPointContainer> points = Query<IConnectionPointContainer>(font);
  if (!points || FAILED(points->FindConnectionPoint(IID_IPropertyNotifySink, point_.put()))) return;
  if (FAILED(point_->Advise(sink_.get(), &cookie_))) point_.reset();
}

}  // namespace qrn::host
