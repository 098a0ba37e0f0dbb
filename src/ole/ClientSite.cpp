#include "ole/ClientSite.h"

#include <olectl.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "ole/Kit.h"

namespace qrn::ole {

HRESULT ClientSite::Ambient(DISPID id, Variant& value) const noexcept {
  const auto ambients = As<IDispatch>();
  if (!ambients) return E_FAIL;
  DISPPARAMS none{};
  return ambients->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                          value.put(), nullptr, nullptr);
}

bool ClientSite::UserMode() const noexcept {
  Variant value;
  return SUCCEEDED(Ambient(DISPID_AMBIENT_USERMODE, value)) && value.type() == VT_BOOL &&
         value->boolVal;
}

bool ClientSite::SaysDesignMode() const noexcept {
  Variant value;
  return SUCCEEDED(Ambient(DISPID_AMBIENT_USERMODE, value)) && value.type() == VT_BOOL &&
         !value->boolVal;
}

Bstr ClientSite::DisplayName() const {
  Variant value;
  if (FAILED(Ambient(DISPID_AMBIENT_DISPLAYNAME, value)) || value.type() != VT_BSTR) {
    return Bstr::Empty();
  }
  return Bstr(value->bstrVal ? Bstr::Copy(value->bstrVal) : Bstr::Empty());
}

namespace {

// Containers inside a form whose controls count as lying on the form itself.
constexpr std::array<std::string_view, 4> kSeenThrough = {"ThunderFrame", "ThunderRT5Frame",
                                                          "ThunderRTFrame", "SSTabCtlWndClass"};

HWND WindowOf(IOleWindow* site) noexcept {
  HWND window = nullptr;
  if (site && FAILED(site->GetWindow(&window))) window = nullptr;
  return window;
}

}  // namespace

HWND ResolveContainerWindow(const ClientSite& site, IOleWindow* inPlaceSite) noexcept {
  const HWND window = inPlaceSite ? WindowOf(inPlaceSite) : WindowOf(site.As<IOleWindow>().get());
  if (!window) return nullptr;
  char name[64] = {};
  GetClassNameA(window, name, sizeof name);
  const bool through = std::ranges::find(kSeenThrough, name) != kSeenThrough.end();
  return through ? GetParent(window) : window;
}

}  // namespace qrn::ole
