#include "binding/ContainerForm.h"

#include "binding/BoundControl.h"
#include "fields/Messages.h"

namespace qrn {
namespace {

using com::Com;
using com::Variant;

// The messages of a question's two steps.
struct Complaints {
  MessageId noId;
  MessageId noValue;
};
constexpr Complaints kOfParent{kVE808, kVE809};
constexpr Complaints kOfMember{kVE810, kVE811};  // of the name and, kept so, of the window

bool Complain(MessageId message) {
  ShowMessage(message);
  return false;
}

// The property `name` of an object, converted to `type`.
bool GetMember(IDispatch* object, const wchar_t* name, VARTYPE type, const Complaints& complaints,
               Variant& value) {
  DISPID id = DISPID_UNKNOWN;
  auto* names = const_cast<LPOLESTR>(name);
  if (!object || FAILED(object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id))) {
    return Complain(complaints.noId);
  }
  DISPPARAMS none{};
  Variant got;
  const HRESULT result = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                        &none, got.put(), nullptr, nullptr);
  if (FAILED(result) || FAILED(got.as(type, value))) return Complain(complaints.noValue);
  return true;
}

// The form, or what else the container calls the control's parent.
Com<IDispatch> ParentOf(const ole::ClientSite& site) {
  Com<IDispatch> extended;
  if (const auto control = site.As<IOleControlSite>()) control->GetExtendedControl(extended.put());
  Variant parent;
  if (!GetMember(extended.get(), L"Parent", VT_DISPATCH, kOfParent, parent)) return nullptr;
  if (!parent->pdispVal) Complain(kOfParent.noValue);
  return Com<IDispatch>(parent->pdispVal);
}

}  // namespace

std::optional<std::string> FormNameOf(const ole::ClientSite& site) {
  const Com<IDispatch> parent = ParentOf(site);
  Variant name;
  if (!parent || !GetMember(parent.get(), L"Name", VT_BSTR, kOfMember, name)) return std::nullopt;
  return NarrowText(com::Bstr::Copy(name->bstrVal));
}

// A handle's 32 bits are all that it has; a container may give it signed or in 64 bits.
std::optional<WindowHandle> FormWindowOf(const ole::ClientSite& site) {
  const Com<IDispatch> parent = ParentOf(site);
  Variant window;
  if (!parent || !GetMember(parent.get(), L"hWnd", VT_I8, kOfMember, window)) return std::nullopt;
  return LongToHandle(static_cast<LONG>(window->llVal));
}

}  // namespace qrn
