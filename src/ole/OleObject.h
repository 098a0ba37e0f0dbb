// IOleObject: the client site, the extent, the verbs, and who is told of saving and closing.
#pragma once

#include <oleidl.h>

#include "ole/Face.h"
#include "ole/tables/Members.h"

namespace qrn::ole {

class OleObject final : public Face<IOleObject> {
 public:
  OleObject(Control& control, const ControlTable& table) noexcept;

  // HIMETRIC.
  SIZE extent() const noexcept { return extent_; }
  // Takes a size without asking anybody, as loading does.
  void LoadExtent(SIZE himetric);
  void TellSaved();

  STDMETHODIMP SetClientSite(IOleClientSite* site) override;
  STDMETHODIMP GetClientSite(IOleClientSite** site) override;
  STDMETHODIMP SetHostNames(LPCOLESTR application, LPCOLESTR document) override;
  STDMETHODIMP Close(DWORD saveOption) override;
  STDMETHODIMP SetMoniker(DWORD which, IMoniker* moniker) override;
  STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
  STDMETHODIMP InitFromData(IDataObject* data, BOOL creation, DWORD reserved) override;
  STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** data) override;
  // Verbs: show, in-place and UI activation, hide, properties; the primary verb shows the
  // properties at design time and activates at run time.
  STDMETHODIMP DoVerb(LONG verb, MSG* message, IOleClientSite* site, LONG index, HWND parent,
                      LPCRECT place) override;
  STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) override;
  STDMETHODIMP Update() override;
  STDMETHODIMP IsUpToDate() override;
  STDMETHODIMP GetUserClassID(CLSID* id) override;
  STDMETHODIMP GetUserType(DWORD form, LPOLESTR* type) override;
  STDMETHODIMP SetExtent(DWORD aspect, SIZEL* size) override;
  STDMETHODIMP GetExtent(DWORD aspect, SIZEL* size) override;
  STDMETHODIMP Advise(IAdviseSink* sink, DWORD* connection) override;
  STDMETHODIMP Unadvise(DWORD connection) override;
  STDMETHODIMP EnumAdvise(IEnumSTATDATA** connections) override;
  STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
  STDMETHODIMP SetColorScheme(LOGPALETTE* palette) override;

 private:
  HRESULT ShowProperties(HWND parent);

  const ControlTable& table_;
  SIZE extent_;
  Com<IOleAdviseHolder> advised_;
};

}  // namespace qrn::ole
