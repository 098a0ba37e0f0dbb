// What a property page knows of the frame it stands in.
#pragma once

#include <ocidl.h>

#include <functional>

#include "host/container/ComObject.h"

namespace qrn::host {

// `changed` is called when the page says that it holds something to apply, or no longer does.
class PropertyPageSite final : public ComObject<IPropertyPageSite> {
 public:
  explicit PropertyPageSite(std::function<void()> changed) : changed_(std::move(changed)) {}

  void Detach() noexcept { changed_ = nullptr; }

  STDMETHODIMP OnStatusChange(DWORD) override {
    return Guard([&]() -> HRESULT {
      if (changed_) changed_();
      return S_OK;
    });
  }
  STDMETHODIMP GetLocaleID(LCID* locale) override {
    if (!locale) return E_POINTER;
    *locale = GetUserDefaultLCID();
    return S_OK;
  }
  STDMETHODIMP GetPageContainer(IUnknown**) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG*) override { return S_FALSE; }

 private:
  std::function<void()> changed_;
};

}  // namespace qrn::host
