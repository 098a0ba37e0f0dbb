// A small container: client site, in-place site, frame and control site in one object, which writes
// down what the control asks of it.
#pragma once

#include <oaidl.h>
#include <olectl.h>
#include <oleidl.h>

#include <functional>
#include <map>
#include <string>

#include "com/Com.h"
#include "com/Handles.h"
#include "com/Variant.h"

namespace qrn::test {

using namespace qrn::com;

// One visible window for all tests: without a window manager every one that goes costs two seconds.
inline HWND TheForm() {
  static HWND form = CreateWindowExW(0, L"STATIC", L"form", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200,
                                     nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  return form;
}

class TestSite final : public IOleClientSite,
                       public IOleInPlaceSite,
                       public IOleInPlaceFrame,
                       public IOleControlSite,
                       public IDispatch {
 public:
  virtual ~TestSite() = default;

  // Hosts a control in this window's client area: site, then in-place activation.
  HRESULT Host(IUnknown* control, LONG verb = OLEIVERB_INPLACEACTIVATE) {
    object_ = Query<IOleObject>(control);
    object_->SetClientSite(this);
    return object_->DoVerb(verb, nullptr, this, 0, window(), &place);
  }
  // Deactivates, closes and takes the site away.
  void Unhost() {
    if (!object_) return;
    object_->Close(OLECLOSE_NOSAVE);
    object_->SetClientSite(nullptr);
    object_.reset();
  }

  HWND window() const { return form ? form : TheForm(); }
  IOleObject* object() const { return object_.get(); }

  HWND form = nullptr;  // set before hosting: another window than the usual one
  std::string log;
  std::map<DISPID, Variant> ambients;
  RECT place{10, 10, 110, 60};
  HRESULT acceleratorResult = S_FALSE;
  DWORD acceleratorModifiers = 99;
  HRESULT mayActivate = S_OK;
  std::function<void()> onUiActivate;
  std::function<void(bool has)> onFocus;
  Com<IDispatch> extended;  // what stands for the control in the container's code
  std::function<HRESULT(REFIID, void**)> more;  // interfaces beside its own
  ULONG references = 0;
  void RunTime(const wchar_t* name = L"Sample1") {
    ambients[DISPID_AMBIENT_USERMODE] = Variant::Bool(true);
    ambients[DISPID_AMBIENT_DISPLAYNAME] = Variant(Bstr(name));
  }

  STDMETHODIMP QueryInterface(REFIID id, void** out) override {
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
    if (!*out) return more ? more(id, out) : E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }

  STDMETHODIMP SaveObject() override { return Note("save"); }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
  STDMETHODIMP ShowObject() override { return Note("show"); }
  STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

  STDMETHODIMP GetWindow(HWND* window) override {
    *window = this->window();
    return S_OK;
  }
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }
  STDMETHODIMP CanInPlaceActivate() override { return mayActivate; }
  STDMETHODIMP OnInPlaceActivate() override { return Note("in"); }
  STDMETHODIMP OnUIActivate() override {
    if (onUiActivate) onUiActivate();
    return Note("ui");
  }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT at,
                                LPRECT clip, LPOLEINPLACEFRAMEINFO) override {
    *frame = this;
    AddRef();
    *document = nullptr;
    *at = *clip = place;
    return S_OK;
  }
  STDMETHODIMP Scroll(SIZE) override { return S_OK; }
  STDMETHODIMP OnUIDeactivate(BOOL) override { return Note("ui-out"); }
  STDMETHODIMP OnInPlaceDeactivate() override { return Note("out"); }
  STDMETHODIMP DiscardUndoState() override { return S_OK; }
  STDMETHODIMP DeactivateAndUndo() override { return S_OK; }
  STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; }

  STDMETHODIMP GetBorder(LPRECT) override { return E_NOTIMPL; }
  STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return E_NOTIMPL; }
  STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* active, LPCOLESTR) override {
    return Note(active ? "active" : "inactive");
  }
  STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
  STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
  STDMETHODIMP RemoveMenus(HMENU) override { return E_NOTIMPL; }
  STDMETHODIMP SetStatusText(LPCOLESTR) override { return E_NOTIMPL; }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
  STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

  STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
  STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
  STDMETHODIMP GetExtendedControl(IDispatch** control) override {
    return extended ? extended.copyTo(control) : E_NOTIMPL;
  }
  STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG*, DWORD modifiers) override {
    acceleratorModifiers = modifiers;
    Note("accelerator");
    return acceleratorResult;
  }
  STDMETHODIMP OnFocus(BOOL has) override {
    if (onFocus) onFocus(has != FALSE);
    return Note(has ? "focus" : "blur");
  }
  STDMETHODIMP ShowPropertyFrame() override { return Note("pages"); }

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* value, EXCEPINFO*,
                      UINT*) override {
    const auto found = ambients.find(id);
    if (found == ambients.end()) return DISP_E_MEMBERNOTFOUND;
    return VariantCopy(value, found->second.get());
  }

 private:
  HRESULT Note(const char* what) {
    log += std::string(what) + " ";
    return S_OK;
  }

  Com<IOleObject> object_;
};

}  // namespace qrn::test
