// The site of one control: every interface through which a control reaches its container.
#pragma once

#include <ocidl.h>
#include <oleidl.h>
#include <servprov.h>

#include "com/VbFormat.h"
#include "host/container/ControlOwner.h"

namespace qrn::host {

// Lives as long as the control holds it; after Detach it answers that the form is gone.
class ControlSite final
    : public ComObject<IOleClientSite, IOleControlSite, IOleInPlaceSite, IDispatch,
                       IPropertyNotifySink, com::IGetVBAObject, IServiceProvider> {
 public:
  explicit ControlSite(ControlOwner& owner) noexcept : owner_(&owner) {}

  void Detach() noexcept { owner_ = nullptr; }

  // IOleClientSite
  STDMETHODIMP SaveObject() override { return S_OK; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer** container) override;
  STDMETHODIMP ShowObject() override { return S_OK; }
  STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

  // IOleControlSite
  STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
  STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
  STDMETHODIMP GetExtendedControl(IDispatch** extended) override;
  STDMETHODIMP TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) override;
  STDMETHODIMP TranslateAccelerator(MSG* message, DWORD modifiers) override;
  STDMETHODIMP OnFocus(BOOL focus) override;
  STDMETHODIMP ShowPropertyFrame() override;

  // IOleInPlaceSite
  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }
  STDMETHODIMP CanInPlaceActivate() override { return owner_ ? S_OK : S_FALSE; }
  STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnUIActivate() override;
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
  STDMETHODIMP Scroll(SIZE) override { return S_FALSE; }
  STDMETHODIMP OnUIDeactivate(BOOL) override;
  STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
  STDMETHODIMP DiscardUndoState() override { return S_OK; }
  STDMETHODIMP DeactivateAndUndo() override { return S_OK; }
  STDMETHODIMP OnPosRectChange(LPCRECT place) override;

  // IDispatch: the ambient properties
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override;

  // IPropertyNotifySink: forms bind nothing to properties, so every change is welcome.
  STDMETHODIMP OnChanged(DISPID) override { return S_OK; }
  STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

  // IGetVBAObject, IServiceProvider
  STDMETHODIMP GetObject(REFIID id, void** out, DWORD reserved) override;
  STDMETHODIMP QueryService(REFGUID service, REFIID id, void** out) override;

 protected:
  void* Find(REFIID id) noexcept override;

 private:
  ControlOwner* owner_;
};

}  // namespace qrn::host
