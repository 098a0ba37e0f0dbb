#include "ole/OleObject.h"

#include <olectl.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "com/Enumerator.h"
#include "com/Extent.h"
#include "ole/Control.h"
#include "ole/SystemGuid.h"

namespace qrn::ole {
namespace {

// A verb as the registration states it. The name lives as long as the program.
struct OwnVerb {
  LONG verb;
  std::u16string_view name;
};

HRESULT GiveVerb(const OwnVerb& verb, OLEVERB* out) {
  *out = OLEVERB{};
  out->lVerb = verb.verb;
  out->lpszVerbName = CopyToTaskMemory(AsWide(verb.name).data());
  out->grfAttribs = OLEVERBATTRIB_ONCONTAINERMENU;
  return out->lpszVerbName ? S_OK : E_OUTOFMEMORY;
}
using VerbEnumerator = Enumerator<IEnumOLEVERB, OLEVERB, OwnVerb, &GiveVerb>;

// For a control that is not registered.
HRESULT OwnVerbs(IEnumOLEVERB** verbs) {
  const std::vector<OwnVerb> own{{OLEIVERB_PRIMARY, kPropertiesVerb}};
  return Make<VerbEnumerator>(own).detachTo(verbs);
}

}  // namespace

OleObject::OleObject(Control& control, const ControlTable& table) noexcept
    : Face(control), table_(table), extent_(PixelsToHimetric({table.widthPx, table.heightPx})) {}

void OleObject::LoadExtent(SIZE himetric) {
  if (!control().HasFixedSize()) extent_ = himetric;
}

void OleObject::TellSaved() {
  if (advised_) advised_->SendOnSave();
}

STDMETHODIMP OleObject::SetClientSite(IOleClientSite* site) {
  return Run([&] {
    if (control().site() && site != control().site().get().get()) control().inPlace().Deactivate();
    control().site().Set(site);
    if (site) control().OnSited();
    return S_OK;
  });
}

STDMETHODIMP OleObject::GetClientSite(IOleClientSite** site) {
  return control().site().get().copyTo(site);
}

STDMETHODIMP OleObject::SetHostNames(LPCOLESTR, LPCOLESTR) { return S_OK; }

STDMETHODIMP OleObject::Close(DWORD saveOption) {
  return Run([&] {
    control().inPlace().Deactivate();
    const Com<IOleClientSite> site = control().site().get();
    if (saveOption != OLECLOSE_NOSAVE && control().persistence().dirty() && site) {
      site->SaveObject();
      TellSaved();
    }
    if (advised_) advised_->SendOnClose();
    return S_OK;
  });
}

STDMETHODIMP OleObject::SetMoniker(DWORD, IMoniker*) { return E_NOTIMPL; }
STDMETHODIMP OleObject::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  if (moniker) *moniker = nullptr;
  return E_NOTIMPL;
}
STDMETHODIMP OleObject::InitFromData(IDataObject*, BOOL, DWORD) { return E_NOTIMPL; }
STDMETHODIMP OleObject::GetClipboardData(DWORD, IDataObject** data) {
  if (data) *data = nullptr;
  return E_NOTIMPL;
}

STDMETHODIMP OleObject::DoVerb(LONG verb, MSG*, IOleClientSite*, LONG, HWND parent, LPCRECT) {
  return Run([&]() -> HRESULT {
    const bool designs = control().site().SaysDesignMode();
    if (verb == OLEIVERB_PRIMARY) verb = designs ? OLEIVERB_PROPERTIES : OLEIVERB_INPLACEACTIVATE;
    switch (verb) {
      case OLEIVERB_SHOW:
      case OLEIVERB_OPEN:
      case OLEIVERB_INPLACEACTIVATE:
        return control().inPlace().Activate(false);
      case OLEIVERB_UIACTIVATE:
        return control().inPlace().Activate(true);
      case OLEIVERB_HIDE:
        control().inPlace().Hide();
        return S_OK;
      case OLEIVERB_PROPERTIES:
        return ShowProperties(parent);
      case OLEIVERB_DISCARDUNDOSTATE:
        return S_OK;
      default:
        return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
    }
  });
}

// The container's own property window goes first, the system's serves where it has none.
HRESULT OleObject::ShowProperties(HWND parent) {
  const auto site = control().site().As<IOleControlSite>();
  if (site && site->ShowPropertyFrame() == S_OK) return S_OK;
  CAUUID pages{};
  const auto source = Query<ISpecifyPropertyPages>(&control().Outer());
  Check(source->GetPages(&pages));
  const TaskMemory<GUID> ids(pages.pElems);
  IUnknown* object = &control().Outer();
  return OleCreatePropertyFrame(parent, 0, 0, Wide(table_.className).c_str(), 1, &object,
                                pages.cElems, pages.pElems, LOCALE_USER_DEFAULT, 0, nullptr);
}

STDMETHODIMP OleObject::EnumVerbs(IEnumOLEVERB** verbs) {
  if (!verbs) return E_POINTER;
  return Run([&] {
    if (OleRegEnumVerbs(AsGuid(table_.classId), verbs) == S_OK) return S_OK;
    return OwnVerbs(verbs);
  });
}

STDMETHODIMP OleObject::Update() { return S_OK; }
STDMETHODIMP OleObject::IsUpToDate() { return S_OK; }

STDMETHODIMP OleObject::GetUserClassID(CLSID* id) {
  if (!id) return E_POINTER;
  *id = AsGuid(table_.classId);
  return S_OK;
}

STDMETHODIMP OleObject::GetUserType(DWORD form, LPOLESTR* type) {
  if (!type) return E_POINTER;
  return Run([&] {
    if (OleRegGetUserType(AsGuid(table_.classId), form, type) == S_OK) return S_OK;
    *type = CopyToTaskMemory((Wide(table_.className) + L" Class").c_str());
    return *type ? S_OK : E_OUTOFMEMORY;
  });
}

STDMETHODIMP OleObject::SetExtent(DWORD aspect, SIZEL* size) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!size) return E_POINTER;
  return Run([&] {
    SIZE wanted{size->cx, size->cy};
    if (control().HasFixedSize()) {
      return wanted.cx == extent_.cx && wanted.cy == extent_.cy ? S_OK : E_FAIL;
    }
    control().AdjustExtent(wanted);
    if (wanted.cx == extent_.cx && wanted.cy == extent_.cy) return S_OK;
    extent_ = wanted;
    control().persistence().SetDirty(true);
    control().view().Tell();
    return S_OK;
  });
}

STDMETHODIMP OleObject::GetExtent(DWORD aspect, SIZEL* size) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!size) return E_POINTER;
  *size = {extent_.cx, extent_.cy};
  return S_OK;
}

STDMETHODIMP OleObject::Advise(IAdviseSink* sink, DWORD* connection) {
  return Run([&] {
    if (!advised_) Check(CreateOleAdviseHolder(advised_.put()));
    return advised_->Advise(sink, connection);
  });
}
STDMETHODIMP OleObject::Unadvise(DWORD connection) {
  return advised_ ? advised_->Unadvise(connection) : OLE_E_NOCONNECTION;
}
STDMETHODIMP OleObject::EnumAdvise(IEnumSTATDATA** connections) {
  if (!connections) return E_POINTER;
  *connections = nullptr;
  return advised_ ? advised_->EnumAdvise(connections) : S_OK;
}

STDMETHODIMP OleObject::GetMiscStatus(DWORD aspect, DWORD* status) {
  if (!status) return E_POINTER;
  return Run([&] {
    const bool registered = OleRegGetMiscStatus(AsGuid(table_.classId), aspect, status) == S_OK;
    if (!registered || *status == 0) {
      *status = aspect == DVASPECT_CONTENT ? table_.registration.miscStatus : 0;
    }
    return S_OK;
  });
}

STDMETHODIMP OleObject::SetColorScheme(LOGPALETTE*) { return E_NOTIMPL; }

}  // namespace qrn::ole
