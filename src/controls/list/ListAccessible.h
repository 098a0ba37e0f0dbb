// What a screen reader finds in lists: their items, and which is chosen.
#pragma once

#include "binding/ListItems.h"
#include "ole/Accessible.h"

namespace qrn {

// A list box. Its items are children without objects of their own, numbered from 1; its value is
// the text of the chosen one.
class ListAccessible final : public ole::Accessible {
 public:
  ListAccessible(HWND window, HWND labelled) : Accessible(window, labelled, ROLE_SYSTEM_LIST) {}

  STDMETHODIMP get_accChildCount(long* count) override;
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override;
  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override;
  STDMETHODIMP get_accFocus(VARIANT* child) override;
  STDMETHODIMP get_accSelection(VARIANT* children) override;
  STDMETHODIMP accSelect(long flags, VARIANT child) override;
  STDMETHODIMP accLocation(long* left, long* top, long* width, long* height,
                           VARIANT child) override;
  STDMETHODIMP accHitTest(long x, long y, VARIANT* child) override;

 private:
  ListItems Items() const noexcept { return {window(), kListBoxMessages}; }
  // The place of a child's item; ListItems::kNone for the list itself and for no child.
  int32_t Place(const VARIANT& child) const noexcept;
  int32_t Chosen() const noexcept;
};

}  // namespace qrn
