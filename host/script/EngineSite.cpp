#include "host/script/EngineSite.h"

namespace qrn::host {

STDMETHODIMP EngineSite::GetLCID(LCID* locale) {
  if (!locale) return E_POINTER;
  *locale = LOCALE_USER_DEFAULT;
  return S_OK;
}

STDMETHODIMP EngineSite::GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** item,
                                     ITypeInfo** type) {
  if (!name) return E_POINTER;
  if (item) *item = nullptr;
  if (type) *type = nullptr;
  if (!host_ || (wanted & SCRIPTINFO_IUNKNOWN) == 0 || !item) return TYPE_E_ELEMENTNOTFOUND;
  return Guard([&]() -> HRESULT {
    const Com<IDispatch> found = host_->ItemNamed(name);
    if (!found) return TYPE_E_ELEMENTNOTFOUND;
    return found->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(item));
  });
}

STDMETHODIMP EngineSite::OnScriptError(IActiveScriptError* error) {
  if (!error || !host_) return S_OK;
  faulted_ = true;
  return Guard([&]() -> HRESULT { return host_->OnScriptFault(FaultOf(error, time_)), S_OK; });
}

STDMETHODIMP EngineSite::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = host_ ? host_->BoxOwner() : nullptr;
  return S_OK;
}

}  // namespace qrn::host
