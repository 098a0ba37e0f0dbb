#include "ole/Accessible.h"

#include "com/WindowText.h"

namespace qrn::ole {
namespace {

std::wstring TextWithoutMark(HWND window) {
  std::wstring text = TextOfWindow(window);
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

Accessible::Accessible(HWND window, HWND labelled, LONG role)
    : window_(window), labelled_(labelled), role_(role) {
  const HRESULT made =
      CreateStdAccessibleObject(window, OBJID_CLIENT, __uuidof(IAccessible), system_.putVoid());
  if (FAILED(made)) throw Failure{made};
}

std::wstring Accessible::Label() const {
  return labelled_ ? LabelBefore(labelled_) : TextWithoutMark(window_);
}

STDMETHODIMP Accessible::get_accName(VARIANT child, BSTR* name) {
  if (!name) return E_INVALIDARG;
  *name = nullptr;
  if (!IsSelf(child)) return system_->get_accName(ChildNumber(child), name);
  return Guard([&] {
    const std::wstring label = Label();
    if (label.empty()) return system_->get_accName(ChildNumber(child), name);
    *name = Bstr(label).detach();
    return S_OK;
  });
}

STDMETHODIMP Accessible::get_accRole(VARIANT child, VARIANT* role) {
  if (role_ == 0 || !IsSelf(child)) return system_->get_accRole(ChildNumber(child), role);
  if (!role) return E_INVALIDARG;
  *role = Variant(static_cast<int32_t>(role_)).release();
  return S_OK;
}

STDMETHODIMP Accessible::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = window_;
  return IsWindow(window_) ? S_OK : E_FAIL;
}

STDMETHODIMP TextAccessible::get_accValue(VARIANT child, BSTR* value) {
  if (!IsSelf(child)) return Accessible::get_accValue(child, value);
  if (!value) return E_INVALIDARG;
  *value = nullptr;
  if (SendMessageW(window(), EM_GETPASSWORDCHAR, 0, 0) != 0) return E_ACCESSDENIED;
  return Guard([&] {
    *value = Bstr(TextOfWindow(window())).detach();
    return S_OK;
  });
}

}  // namespace qrn::ole
