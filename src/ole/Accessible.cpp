#include "ole/Accessible.h"

namespace qrn::ole {
namespace {

std::wstring TextWithoutMark(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  for (size_t at = text.find(L'&'); at != std::wstring::npos; at = text.find(L'&', at + 1)) {
    text.erase(at, 1);  // of two one stays
  }
  return text;
}

bool EndsTheSearch(HWND window) noexcept {
  return (GetWindowLongW(window, GWL_STYLE) & (WS_TABSTOP | WS_GROUP)) != 0;
}

}  // namespace

std::wstring LabelBefore(HWND window) {
  for (HWND before = GetWindow(window, GW_HWNDPREV); before != nullptr;
       before = GetWindow(before, GW_HWNDPREV)) {
    const LRESULT kind = SendMessageW(before, WM_GETDLGCODE, 0, 0);
    if ((kind & DLGC_STATIC) != 0) return TextWithoutMark(before);
    if (EndsTheSearch(before)) break;
  }
  return {};
}

Accessible::Accessible(HWND window, HWND labelled) : window_(window), labelled_(labelled) {
  const HRESULT made =
      CreateStdAccessibleObject(window, OBJID_CLIENT, __uuidof(IAccessible), system_.putVoid());
  if (FAILED(made)) throw Failure{made};
}

void* Accessible::Find(REFIID id) noexcept {
  return id == __uuidof(IDispatch) ? static_cast<IDispatch*>(this) : Object::Find(id);
}

// By name and number too everything is asked of this object: the type's own functions call it.
STDMETHODIMP Accessible::Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* sent,
                                VARIANT* result, EXCEPINFO* exception, UINT* bad) {
  Com<ITypeInfo> info;
  const HRESULT found = system_->GetTypeInfo(0, locale, info.put());
  if (FAILED(found)) return found;
  return info->Invoke(static_cast<IAccessible*>(this), id, flags, sent, result, exception, bad);
}

STDMETHODIMP Accessible::get_accName(VARIANT child, BSTR* name) {
  if (!name) return E_INVALIDARG;
  *name = nullptr;
  if (!IsSelf(child)) return system_->get_accName(child, name);
  return Guard([&] {
    const std::wstring label = LabelBefore(labelled_);
    if (label.empty()) return system_->get_accName(child, name);
    *name = Bstr(label).detach();
    return S_OK;
  });
}

STDMETHODIMP Accessible::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = window_;
  return IsWindow(window_) ? S_OK : E_FAIL;
}

}  // namespace qrn::ole
