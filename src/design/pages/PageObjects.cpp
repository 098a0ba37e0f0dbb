#include "design/pages/PageObjects.h"

#include "com/Text.h"
#include "ole/ClientSite.h"

namespace qrn::design {
namespace {

using com::Com;
using com::Query;
using com::Variant;

DISPID MemberId(IDispatch* object, const char* name) {
  DISPID id = DISPID_UNKNOWN;
  std::wstring wide = com::Wide(name);
  LPOLESTR names = wide.data();
  if (!object || FAILED(object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id))) {
    return DISPID_UNKNOWN;
  }
  return id;
}

void PutTo(IUnknown* object, const char* property, const Variant& value) {
  const auto dispatch = Query<IDispatch>(object);
  const DISPID id = MemberId(dispatch.get(), property);
  if (id == DISPID_UNKNOWN) return;
  Variant sent;
  VariantCopy(sent.put(), const_cast<VARIANT*>(value.get()));
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS arguments{sent.get(), &put, 1, 1};
  dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &arguments, nullptr,
                   nullptr, nullptr);
}

}  // namespace

void PageObjects::Set(ULONG count, IUnknown** objects) {
  objects_.clear();
  for (ULONG i = 0; i < count; ++i) objects_.emplace_back(objects[i]);
}

DISPID PageObjects::IdOf(const char* property) const {
  if (objects_.empty()) return DISPID_UNKNOWN;
  return MemberId(Query<IDispatch>(objects_.front()).get(), property);
}

Variant PageObjects::Get(const char* property, VARTYPE type) const {
  Variant got;
  Variant converted;
  const DISPID id = IdOf(property);
  if (id == DISPID_UNKNOWN) return got;
  DISPPARAMS none{};
  const auto object = Query<IDispatch>(objects_.front());
  if (FAILED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                            got.put(), nullptr, nullptr)) ||
      FAILED(got.as(type, converted))) {
    return Variant();
  }
  return converted;
}

std::string PageObjects::Text(const char* property) const {
  const Variant value = Get(property, VT_BSTR);
  return value.type() == VT_BSTR ? com::NarrowText(com::Bstr::Copy(value->bstrVal)) : std::string();
}

int32_t PageObjects::Number(const char* property) const {
  const Variant value = Get(property, VT_I4);
  return value.type() == VT_I4 ? static_cast<int32_t>(value->lVal) : 0;
}

HWND PageObjects::Form() const {
  const auto object = objects_.empty() ? Com<IOleObject>() : Query<IOleObject>(objects_.front());
  Com<IOleClientSite> client;
  if (!object || FAILED(object->GetClientSite(client.put()))) return nullptr;
  ole::ClientSite site;
  site.Set(client.get());
  return ole::ResolveContainerWindow(site, site.As<IOleInPlaceSite>().get());
}

void PageObjects::Put(const char* property, const Variant& value) const {
  const auto objects = objects_;
  for (const Com<IUnknown>& object : objects) PutTo(object.get(), property, value);
}

}  // namespace qrn::design
