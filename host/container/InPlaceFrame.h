// The frame of a form for in-place active controls: its window, and which control is active.
#pragma once

#include <oleidl.h>

#include "host/container/ComObject.h"

namespace qrn::host {

class InPlaceFrame final : public ComObject<IOleInPlaceFrame> {
 public:
  explicit InPlaceFrame(HWND window) noexcept : window_(window) {}

  // The control that wants keys first; empty if none does.
  const Com<IOleInPlaceActiveObject>& Active() const noexcept { return active_; }
  // The window is gone: nothing is answered any more.
  void Detach() noexcept;

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }
  STDMETHODIMP GetBorder(LPRECT border) override;
  STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
  STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* active, LPCOLESTR) override;
  STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return S_OK; }
  STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
  STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
  STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
  STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

 protected:
  void* Find(REFIID id) noexcept override;

 private:
  HWND window_;
  Com<IOleInPlaceActiveObject> active_;
};

}  // namespace qrn::host
