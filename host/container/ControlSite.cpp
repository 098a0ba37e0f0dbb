#include "host/container/ControlSite.h"

#include "host/container/FormatService.h"
#include "host/container/Units.h"

namespace qrn::host {
namespace {

constexpr float kTwipsPerInch = 1440;

long TwipsToHimetric(float twips) noexcept {
  return std::lround(twips * kHimetricPerInch / kTwipsPerInch);
}
float HimetricToTwips(long himetric) noexcept {
  return static_cast<float>(himetric) * kTwipsPerInch / kHimetricPerInch;
}

}  // namespace

void* ControlSite::Find(REFIID id) noexcept {
  if (id == IID_IOleWindow) return static_cast<IOleInPlaceSite*>(this);
  return Object::Find(id);
}

STDMETHODIMP ControlSite::GetContainer(IOleContainer** container) {
  if (!container) return E_POINTER;
  *container = nullptr;
  return E_NOINTERFACE;
}

STDMETHODIMP ControlSite::GetExtendedControl(IDispatch** extended) {
  if (!extended) return E_POINTER;
  *extended = nullptr;
  if (!owner_) return E_UNEXPECTED;
  return Guard([&]() -> HRESULT { return owner_->Extended().copyTo(extended); });
}

// The container counts in twips.
STDMETHODIMP ControlSite::TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) {
  if (!himetric || !container) return E_POINTER;
  if (flags & XFORMCOORDS_HIMETRICTOCONTAINER) {
    *container = {HimetricToTwips(himetric->x), HimetricToTwips(himetric->y)};
  } else if (flags & XFORMCOORDS_CONTAINERTOHIMETRIC) {
    *himetric = {TwipsToHimetric(container->x), TwipsToHimetric(container->y)};
  } else {
    return E_INVALIDARG;
  }
  return S_OK;
}

STDMETHODIMP ControlSite::TranslateAccelerator(MSG* message, DWORD) {
  if (!message) return E_POINTER;
  if (!owner_) return S_FALSE;
  return Guard([&]() -> HRESULT { return owner_->OnKey(*message) ? S_OK : S_FALSE; });
}

STDMETHODIMP ControlSite::OnFocus(BOOL focus) {
  if (!owner_) return S_OK;
  return Guard([&]() -> HRESULT { return owner_->OnFocus(focus != FALSE), S_OK; });
}

STDMETHODIMP ControlSite::ShowPropertyFrame() {
  if (!owner_) return E_UNEXPECTED;
  return Guard([&]() -> HRESULT { return owner_->ShowPages(), S_OK; });
}

STDMETHODIMP ControlSite::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = owner_ ? owner_->ParentWindow() : nullptr;
  return *window ? S_OK : E_FAIL;
}

STDMETHODIMP ControlSite::OnUIActivate() {
  if (!owner_) return E_UNEXPECTED;
  return Guard([&]() -> HRESULT { return owner_->OnUIActive(true), S_OK; });
}

STDMETHODIMP ControlSite::OnUIDeactivate(BOOL) {
  if (!owner_) return S_OK;
  return Guard([&]() -> HRESULT { return owner_->OnUIActive(false), S_OK; });
}

STDMETHODIMP ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                           LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
  if (!frame || !document || !place || !clip || !info) return E_POINTER;
  *frame = nullptr;
  *document = nullptr;
  if (!owner_) return E_UNEXPECTED;
  return Guard([&]() -> HRESULT {
    const Com<InPlaceFrame> own = owner_->Frame();
    *place = *clip = owner_->Place();
    info->fMDIApp = FALSE;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    com::Check(own->GetWindow(&info->hwndFrame));
    return own->QueryInterface(IID_IOleInPlaceFrame, reinterpret_cast<void**>(frame));
  });
}

STDMETHODIMP ControlSite::OnPosRectChange(LPCRECT place) {
  if (!place) return E_POINTER;
  if (!owner_) return E_UNEXPECTED;
  return Guard([&]() -> HRESULT { return owner_->OnMoved(*place), S_OK; });
}

STDMETHODIMP ControlSite::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP ControlSite::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                                 EXCEPINFO*, UINT*) {
  if ((flags & (DISPATCH_PROPERTYGET | DISPATCH_METHOD)) == 0 || !owner_) {
    return DISP_E_MEMBERNOTFOUND;
  }
  return Guard([&] { return AmbientValue(owner_->Ambients(), id, result); });
}

STDMETHODIMP ControlSite::GetObject(REFIID id, void** out, DWORD) {
  if (!out) return E_POINTER;
  *out = nullptr;
  return Guard([&] { return MakeCom<FormatService>()->QueryInterface(id, out); });
}

STDMETHODIMP ControlSite::QueryService(REFGUID service, REFIID id, void** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  return service == __uuidof(com::IGetVBAObject) ? QueryInterface(id, out) : E_NOINTERFACE;
}

}  // namespace qrn::host
