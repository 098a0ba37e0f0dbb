#include "host/container/PropertyBag.h"

#include <stdexcept>

#include "host/container/Fonts.h"
#include "host/container/Text.h"

namespace qrn::host {
namespace {

Variant ObjectValue(const Com<IDispatch>& object) { return Variant(object); }

// An object of a class in the system that reads the group from a bag of its own.
Variant GroupObject(const form::Property& property, CompanionFiles& files) {
  GUID id{};
  Com<IUnknown> object;
  if (SUCCEEDED(CLSIDFromString(Wide(property.groupClass).c_str(), &id))) {
    CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.putVoid());
  }
  const Com<IPersistPropertyBag> persist = Query<IPersistPropertyBag>(object);
  if (!persist)
    throw std::runtime_error(property.name + ": there is no class " + property.groupClass);
  form::Mistakes mistakes;
  persist->InitNew();
  const auto bag = MakeCom<PropertyBag>(std::span(property.group), files, mistakes);
  if (FAILED(persist->Load(bag.get(), nullptr)) || mistakes.Any()) {
    throw std::runtime_error(property.name + ": its values are not taken");
  }
  Variant value;
  value->vt = VT_UNKNOWN;
  value->punkVal = object.detach();
  return value;
}

Variant GroupValue(const form::Property& property, CompanionFiles& files) {
  if (IsFontGroup(property)) return ObjectValue(Com<IDispatch>(MakeFont(property).get()));
  return GroupObject(property, files);
}

struct PlainValue {
  CompanionFiles& files;

  Variant operator()(const std::string& text) const { return Variant(MakeBstr(text)); }
  Variant operator()(int32_t number) const { return Variant(number); }
  Variant operator()(double number) const {
    Variant value;
    value->vt = VT_R8;
    value->dblVal = number;
    return value;
  }
  Variant operator()(const form::FileReference& reference) const {
    if (reference.isText) return Variant(MakeBstr(files.Text(reference)));
    return ObjectValue(Com<IDispatch>(files.Picture(reference).get()));
  }
  Variant operator()(const form::BareWord& word) const {
    throw std::runtime_error("'" + word.text + "' is no value here");
  }
};

bool IsObject(VARTYPE type) noexcept { return type == VT_DISPATCH || type == VT_UNKNOWN; }

HRESULT GiveObject(Variant value, VARTYPE type, VARIANT* out) noexcept {
  const Com<IUnknown> object(value->punkVal);
  void* asked = nullptr;
  if (object) {
    const HRESULT result =
        object->QueryInterface(type == VT_DISPATCH ? IID_IDispatch : IID_IUnknown, &asked);
    if (FAILED(result)) return result;
  }
  out->vt = type;
  out->punkVal = static_cast<IUnknown*>(asked);
  return S_OK;
}

}  // namespace

Variant ValueOf(const form::Property& property, CompanionFiles& files) {
  if (property.isGroup) return GroupValue(property, files);
  return std::visit(PlainValue{files}, property.value);
}

HRESULT PropertyBag::Convert(const form::Property& property, VARTYPE type, VARIANT* value) {
  Variant plain = ValueOf(property, files_);
  if (type == VT_EMPTY) type = plain.type();
  if (IsObject(plain.type()) && IsObject(type)) {
    return GiveObject(std::move(plain), type, value);
  }
  Variant converted;
  const HRESULT result =
      VariantChangeTypeEx(converted.put(), plain.get(), LOCALE_USER_DEFAULT, 0, type);
  if (FAILED(result)) throw std::runtime_error(property.name + ": the value does not fit");
  *value = converted.release();
  return S_OK;
}

STDMETHODIMP PropertyBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog*) {
  if (!name || !value) return E_POINTER;
  return Guard([&]() -> HRESULT {
    for (const form::Property& property : properties_) {
      if (!SameName(Wide(property.name), name)) continue;
      read_.insert(&property);
      last_ = &property;
      const auto type = static_cast<VARTYPE>(value->vt);
      try {
        return Convert(property, type, value);
      } catch (const std::runtime_error& error) {
        mistakes_.Add(property.line, error.what());
        return E_FAIL;
      }
    }
    return E_INVALIDARG;
  });
}

}  // namespace qrn::host
