// In-place activation: the control's window in the container's, and the control as the active one.
#pragma once

#include <oleidl.h>

#include "ole/Face.h"

namespace qrn::ole {

class InPlace final : public Face<IOleInPlaceObject, IOleInPlaceActiveObject> {
 public:
  using Face::Face;

  bool active() const noexcept { return active_; }
  bool uiActive() const noexcept { return uiActive_; }
  IOleInPlaceSite* site() const noexcept { return site_.get(); }

  // Makes and shows the window; with `ui` the control also becomes the active one of its frame and
  // gets the focus. Asked for again that gives only the focus: containers do so after a message box
  // or another form.
  HRESULT Activate(bool ui);
  // Undoes both; the window is destroyed. Without effect on an inactive control.
  void Deactivate() noexcept;
  void Hide();

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
  STDMETHODIMP InPlaceDeactivate() override;
  STDMETHODIMP UIDeactivate() override;
  STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) override;
  STDMETHODIMP ReactivateAndUndo() override;
  STDMETHODIMP TranslateAccelerator(LPMSG message) override;
  STDMETHODIMP OnFrameWindowActivate(BOOL activate) override;
  STDMETHODIMP OnDocWindowActivate(BOOL activate) override;
  STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) override;
  STDMETHODIMP EnableModeless(BOOL enable) override;

 private:
  // Where the container wants the control, and the windows around it.
  struct Surroundings {
    Com<IOleInPlaceFrame> frame;
    Com<IOleInPlaceUIWindow> document;
    RECT place{};
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
  };
  Surroundings Look() const;
  void BeActiveIn(const Surroundings& around, IOleInPlaceActiveObject* object);

  bool StandsActive() const noexcept;
  HRESULT EnterPlace();
  HRESULT ShowWindowAt(const Surroundings& around);
  HRESULT BecomeUiActive(const Surroundings& around);
  void LeaveUi();

  Com<IOleInPlaceSite> site_;  // while active
  bool active_ = false;
  bool uiActive_ = false;
  bool leaving_ = false;  // a container that is given the focus meanwhile must not hand it back
};

}  // namespace qrn::ole
