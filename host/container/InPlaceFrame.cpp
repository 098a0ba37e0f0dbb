#include "host/container/InPlaceFrame.h"

namespace qrn::host {

void* InPlaceFrame::Find(REFIID id) noexcept {
  if (id == IID_IOleWindow || id == IID_IOleInPlaceUIWindow) {
    return static_cast<IOleInPlaceFrame*>(this);
  }
  return Object::Find(id);
}

void InPlaceFrame::Detach() noexcept {
  active_.reset();
  window_ = nullptr;
}

STDMETHODIMP InPlaceFrame::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = window_;
  return window_ ? S_OK : E_FAIL;
}

STDMETHODIMP InPlaceFrame::GetBorder(LPRECT border) {
  if (!border) return E_POINTER;
  return GetClientRect(window_, border) ? S_OK : E_FAIL;
}

STDMETHODIMP InPlaceFrame::SetActiveObject(IOleInPlaceActiveObject* active, LPCOLESTR) {
  active_ = Com<IOleInPlaceActiveObject>(active);
  return S_OK;
}

}  // namespace qrn::host
