#include "controls/list/ListAccessible.h"

#include "com/Guard.h"

namespace qrn {
namespace {

HRESULT GiveText(const std::wstring& text, BSTR* out) {
  *out = com::Bstr(text).detach();
  return S_OK;
}

HRESULT GiveNumber(long number, VARIANT* out) noexcept {
  out->vt = VT_I4;
  out->lVal = number;
  return S_OK;
}

// The child of an item, nothing for ListItems::kNone.
HRESULT GiveChild(int32_t item, VARIANT* out) noexcept {
  VariantInit(out);
  return item == ListItems::kNone ? S_FALSE : GiveNumber(item + 1, out);
}

RECT ItemRect(HWND list, int32_t item) noexcept {
  RECT rect{};
  SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&rect));
  MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&rect), 2);
  return rect;
}

}  // namespace

int32_t ListAccessible::Place(const VARIANT& child) const noexcept {
  const VARIANT number = ole::ChildNumber(child);
  if (number.vt != VT_I4 || !Items().Has(number.lVal - 1)) return ListItems::kNone;
  return number.lVal - 1;
}

// A window that is gone answers 0 to everything.
int32_t ListAccessible::Chosen() const noexcept {
  const int32_t item = Items().Selected();
  return Items().Has(item) ? item : ListItems::kNone;
}

STDMETHODIMP ListAccessible::get_accChildCount(long* count) {
  if (!count) return E_INVALIDARG;
  *count = Items().Count();
  return S_OK;
}

STDMETHODIMP ListAccessible::get_accChild(VARIANT child, IDispatch** object) {
  if (!object) return E_INVALIDARG;
  *object = nullptr;
  return Place(child) == ListItems::kNone ? E_INVALIDARG : S_FALSE;
}

STDMETHODIMP ListAccessible::get_accName(VARIANT child, BSTR* name) {
  const int32_t item = Place(child);
  if (item == ListItems::kNone || !name) return Accessible::get_accName(child, name);
  return com::Guard([&] { return GiveText(Items().Text(item), name); });
}

STDMETHODIMP ListAccessible::get_accValue(VARIANT child, BSTR* value) {
  if (!value) return E_INVALIDARG;
  *value = nullptr;
  if (!ole::IsSelf(child)) return S_FALSE;
  return com::Guard([&] { return GiveText(Items().SelectedText(), value); });
}

STDMETHODIMP ListAccessible::get_accRole(VARIANT child, VARIANT* role) {
  if (ole::IsSelf(child)) return Accessible::get_accRole(child, role);
  if (!role) return E_INVALIDARG;
  VariantInit(role);
  return Place(child) == ListItems::kNone ? E_INVALIDARG : GiveNumber(ROLE_SYSTEM_LISTITEM, role);
}

STDMETHODIMP ListAccessible::get_accState(VARIANT child, VARIANT* state) {
  const int32_t item = Place(child);
  if (item == ListItems::kNone || !state) return Accessible::get_accState(child, state);
  VariantInit(state);
  long number = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
  if (item == Chosen()) {
    number |= STATE_SYSTEM_SELECTED;
    if (GetFocus() == window()) number |= STATE_SYSTEM_FOCUSED;
  }
  return GiveNumber(number, state);
}

STDMETHODIMP ListAccessible::get_accFocus(VARIANT* child) {
  if (!child) return E_INVALIDARG;
  return GiveChild(GetFocus() == window() ? Chosen() : ListItems::kNone, child);
}

STDMETHODIMP ListAccessible::get_accSelection(VARIANT* children) {
  return children ? GiveChild(Chosen(), children) : E_INVALIDARG;
}

STDMETHODIMP ListAccessible::accSelect(long flags, VARIANT child) {
  const int32_t item = Place(child);
  if (item == ListItems::kNone) return Accessible::accSelect(flags, child);
  if ((flags & SELFLAG_TAKEFOCUS) != 0) SetFocus(window());
  if ((flags & (SELFLAG_TAKESELECTION | SELFLAG_TAKEFOCUS)) != 0) Items().Select(item);
  return S_OK;
}

STDMETHODIMP ListAccessible::accLocation(long* left, long* top, long* width, long* height,
                                         VARIANT child) {
  const int32_t item = Place(child);
  if (item == ListItems::kNone) return Accessible::accLocation(left, top, width, height, child);
  if (!left || !top || !width || !height) return E_INVALIDARG;
  const RECT rect = ItemRect(window(), item);
  *left = rect.left;
  *top = rect.top;
  *width = rect.right - rect.left;
  *height = rect.bottom - rect.top;
  return S_OK;
}

STDMETHODIMP ListAccessible::accHitTest(long x, long y, VARIANT* child) {
  const HRESULT hit = Accessible::accHitTest(x, y, child);
  if (hit != S_OK || !ole::IsSelf(*child)) return hit;
  POINT point{x, y};
  ScreenToClient(window(), &point);
  const LRESULT found = SendMessageW(window(), LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y));
  const bool outside = HIWORD(found) != 0 || !Items().Has(LOWORD(found));
  return outside ? hit : GiveChild(LOWORD(found), child);
}

}  // namespace qrn
