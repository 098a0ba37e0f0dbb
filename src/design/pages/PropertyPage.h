// A property page: one class, played by the rows of PageRows.h.
//
// The frame may make, show, hide, move and let go in any order; what needs a window fails without
// one (E_UNEXPECTED). The page lives while the frame shows it and keeps its dirty mark alone.
#pragma once

#include <ocidl.h>

#include <memory>

#include "com/Object.h"
#include "design/pages/PageDialog.h"
#include "ole/ClassFactory.h"

namespace qrn::design {

class PropertyPage final : public com::Object<IPropertyPage2> {
 public:
  explicit PropertyPage(const PageLayout& layout) noexcept : layout_(layout) {}

  STDMETHODIMP SetPageSite(IPropertyPageSite* site) override;
  STDMETHODIMP Activate(HWND parent, LPCRECT place, BOOL modal) override;
  STDMETHODIMP Deactivate() override;
  // The size is that of the dialog, in pixels, with its own font or the one that the frame gave.
  STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override;
  // Shows what the new objects have, if the page is active.
  STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override;
  STDMETHODIMP Show(UINT command) override;
  STDMETHODIMP Move(LPCRECT place) override;
  STDMETHODIMP IsPageDirty() override { return dirty_ ? S_OK : S_FALSE; }
  // Puts what is chosen to every object; a put that fails is passed over. Without a window there is
  // nothing to put.
  STDMETHODIMP Apply() override;
  // The frame shows the help that GetPageInfo names.
  STDMETHODIMP Help(LPCOLESTR) override { return E_NOTIMPL; }
  // S_FALSE for keys that are the frame's (design/pages/PageKeys.h).
  STDMETHODIMP TranslateAccelerator(MSG* message) override;
  // Gives the keyboard to the control that sets the property.
  STDMETHODIMP EditProperty(DISPID property) override;

 protected:
  ~PropertyPage() override;
  void* Find(REFIID id) noexcept override;

 private:
  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
  HWND MakeDialog(HWND parent, PropertyPage* page) const noexcept;
  bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  SIZE Measure() const noexcept;
  void ShowObjects();
  void MarkDirty();
  void TellSite(DWORD status);

  const PageLayout& layout_;
  PageObjects objects_;
  com::Com<IPropertyPageSite> site_;
  HWND window_ = nullptr;
  SIZE sizePx_{};                       // that the font of the frame needs, 0 without one
  std::shared_ptr<PageDialog> dialog_;  // kept by whoever is inside it
  bool dirty_ = false;
};

// Makes a page; nobody aggregates one.
template <const PageLayout& Layout>
HRESULT CreatePage(IUnknown* aggregator, REFIID id, void** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  if (aggregator) return CLASS_E_NOAGGREGATION;
  return com::Guard([&] { return com::Make<PropertyPage>(Layout)->QueryInterface(id, out); });
}

}  // namespace qrn::design
