#include "TestSite.h"

namespace qrn::test {

HWND TheForm() {
  static HWND form = CreateWindowExW(0, L"STATIC", L"form", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200,
                                     nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  return form;
}

HRESULT TestSite::Host(IUnknown* control, LONG verb) {
  object_ = Query<IOleObject>(control);
  object_->SetClientSite(this);
  return object_->DoVerb(verb, nullptr, this, 0, window(), &place);
}

void TestSite::Unhost() {
  if (!object_) return;
  object_->Close(OLECLOSE_NOSAVE);
  object_->SetClientSite(nullptr);
  object_.reset();
}

void TestSite::RunTime(const wchar_t* name) {
  ambients[DISPID_AMBIENT_USERMODE] = Variant::Bool(true);
  ambients[DISPID_AMBIENT_DISPLAYNAME] = Variant(Bstr(name));
}

STDMETHODIMP TestSite::QueryInterface(REFIID id, void** out) {
  *out = nullptr;
  if (id == __uuidof(IUnknown) || id == __uuidof(IOleClientSite)) {
    *out = static_cast<IOleClientSite*>(this);
  } else if (id == __uuidof(IOleInPlaceSite) || id == __uuidof(IOleWindow)) {
    *out = static_cast<IOleInPlaceSite*>(this);
  } else if (id == __uuidof(IOleControlSite)) {
    *out = static_cast<IOleControlSite*>(this);
  } else if (id == __uuidof(IDispatch)) {
    *out = static_cast<IDispatch*>(this);
  }
  if (!*out) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP TestSite::GetWindow(HWND* window) {
  *window = this->window();
  return S_OK;
}

STDMETHODIMP TestSite::OnUIActivate() {
  if (onUiActivate) onUiActivate();
  return Note("ui");
}

STDMETHODIMP TestSite::OnFocus(BOOL has) {
  if (onFocus) onFocus(has != FALSE);
  return Note(has ? "focus" : "blur");
}

STDMETHODIMP TestSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                        LPRECT at, LPRECT clip, LPOLEINPLACEFRAMEINFO) {
  *frame = this;
  AddRef();
  *document = nullptr;
  *at = *clip = place;
  return S_OK;
}

STDMETHODIMP TestSite::SetActiveObject(IOleInPlaceActiveObject* active, LPCOLESTR) {
  return Note(active ? "active" : "inactive");
}

STDMETHODIMP TestSite::TranslateAccelerator(MSG*, DWORD modifiers) {
  acceleratorModifiers = modifiers;
  Note("accelerator");
  return acceleratorResult;
}

STDMETHODIMP TestSite::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* value,
                              EXCEPINFO*, UINT*) {
  const auto found = ambients.find(id);
  if (found == ambients.end()) return DISP_E_MEMBERNOTFOUND;
  return VariantCopy(value, found->second.get());
}

HRESULT TestSite::Note(const char* what) {
  log += std::string(what) + " ";
  return S_OK;
}

}  // namespace qrn::test
