#include "ole/InPlace.h"

#include <olectl.h>

#include "com/Extent.h"
#include "ole/Control.h"

namespace qrn::ole {

HRESULT InPlace::Activate(bool ui) {
  if (!control().site() || leaving_) return E_FAIL;
  if (ui && StandsActive()) {
    control().FocusWindow();
    return S_OK;
  }
  if (!active_) Check(EnterPlace());
  const Surroundings around = Look();
  Check(ShowWindowAt(around));
  if (ui && !uiActive_) Check(BecomeUiActive(around));
  if (const Com<IOleClientSite> client = control().site().get()) client->ShowObject();
  return S_OK;
}

// The active one, with a window that is shown.
bool InPlace::StandsActive() const noexcept {
  return uiActive_ && GetWindowLongW(control().hwnd(), GWL_STYLE) & WS_VISIBLE;
}

HRESULT InPlace::EnterPlace() {
  site_ = control().site().As<IOleInPlaceSite>();
  if (!site_) return E_NOINTERFACE;
  if (site_->CanInPlaceActivate() != S_OK) {
    site_.reset();
    return E_FAIL;
  }
  const HRESULT result = site_->OnInPlaceActivate();
  active_ = SUCCEEDED(result);
  if (!active_) site_.reset();
  return result;
}

InPlace::Surroundings InPlace::Look() const {
  Surroundings around;
  around.info.cb = sizeof around.info;
  const HRESULT result = site_->GetWindowContext(around.frame.put(), around.document.put(),
                                                 &around.place, &around.clip, &around.info);
  if (FAILED(result)) {
    const SIZE pixels = HimetricToPixels(control().oleObject().extent());
    around.place = around.clip = {0, 0, pixels.cx, pixels.cy};
  }
  return around;
}

HRESULT InPlace::ShowWindowAt(const Surroundings& around) {
  RECT place = around.place;
  control().AdjustRect(place);
  if (!control().hwnd()) {
    HWND parent = nullptr;
    HRESULT result = site_->GetWindow(&parent);
    if (SUCCEEDED(result) && !control().window().Create(parent, place)) result = E_FAIL;
    if (FAILED(result)) {
      Deactivate();
      return result;
    }
  }
  control().window().Move(place, around.clip);
  ShowWindow(control().hwnd(), SW_SHOWNA);
  return S_OK;
}

HRESULT InPlace::BecomeUiActive(const Surroundings& around) {
  uiActive_ = true;
  const HRESULT result = site_->OnUIActivate();
  if (FAILED(result)) {
    uiActive_ = false;
    return result;
  }
  if (!uiActive_) return S_OK;  // the container thought better of it meanwhile
  BeActiveIn(around, this);
  control().FocusWindow();
  return S_OK;
}

void InPlace::BeActiveIn(const Surroundings& around, IOleInPlaceActiveObject* object) {
  if (around.frame) {
    around.frame->SetActiveObject(object, nullptr);
    if (object) around.frame->SetBorderSpace(nullptr);
  }
  if (around.document) {
    around.document->SetActiveObject(object, nullptr);
    if (object) around.document->SetBorderSpace(nullptr);
  }
}

void InPlace::LeaveUi() {
  if (!uiActive_) return;
  uiActive_ = false;
  const Com<IOleInPlaceSite> site = site_;
  BeActiveIn(Look(), nullptr);
  site->OnUIDeactivate(FALSE);
}

void InPlace::Deactivate() noexcept {
  leaving_ = true;
  Guard([&] {
    if (!active_) {
      control().window().Destroy();
      return S_OK;
    }
    LeaveUi();
    control().window().GiveFocusAway();  // still active: the container hears of it
    control().window().Destroy();
    active_ = false;
    if (const Com<IOleInPlaceSite> site = std::exchange(site_, {})) site->OnInPlaceDeactivate();
    return S_OK;
  });
  leaving_ = false;
}

void InPlace::Hide() {
  LeaveUi();
  if (control().hwnd()) ShowWindow(control().hwnd(), SW_HIDE);
}

STDMETHODIMP InPlace::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = control().hwnd();
  return *window ? S_OK : E_FAIL;
}

STDMETHODIMP InPlace::ContextSensitiveHelp(BOOL) { return S_OK; }

STDMETHODIMP InPlace::InPlaceDeactivate() {
  return Run([&] {
    Deactivate();
    return S_OK;
  });
}

STDMETHODIMP InPlace::UIDeactivate() {
  return Run([&] {
    LeaveUi();
    return S_OK;
  });
}

STDMETHODIMP InPlace::SetObjectRects(LPCRECT place, LPCRECT clip) {
  if (!place || !clip) return E_POINTER;
  return Run([&] {
    RECT adjusted = *place;
    control().AdjustRect(adjusted);
    control().window().Move(adjusted, *clip);
    return S_OK;
  });
}

STDMETHODIMP InPlace::ReactivateAndUndo() { return INPLACE_E_NOTUNDOABLE; }

STDMETHODIMP InPlace::TranslateAccelerator(LPMSG message) {
  if (!message) return E_POINTER;
  return Run([&] { return control().OnAccelerator(*message); });
}

STDMETHODIMP InPlace::OnFrameWindowActivate(BOOL) { return S_OK; }
STDMETHODIMP InPlace::OnDocWindowActivate(BOOL) { return S_OK; }
STDMETHODIMP InPlace::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) { return S_OK; }
STDMETHODIMP InPlace::EnableModeless(BOOL) { return S_OK; }

}  // namespace qrn::ole
