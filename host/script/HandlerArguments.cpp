#include "host/script/HandlerArguments.h"

#include <cstring>

namespace qrn::host {
namespace {

// Bytes of a plain type that is stored by copying; 0 for types that own something.
size_t PlainSize(VARTYPE type) noexcept {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    default:
      return 0;
  }
}

void StoreText(Variant& value, BSTR* place) noexcept {
  Bstr::Take(value.release().bstrVal).moveTo(*place);
}

void StoreObject(Variant& value, IUnknown** place) noexcept {
  const auto old = Com<IUnknown>::Take(std::exchange(*place, value.release().punkVal));
}

void Store(const Variant& changed, VARIANT& given) noexcept {
  const auto type = static_cast<VARTYPE>(given.vt & VT_TYPEMASK);
  if ((given.vt & VT_ARRAY) != 0 || !given.byref) return;
  if (type == VT_VARIANT) {
    VariantCopyInd(given.pvarVal, const_cast<VARIANT*>(changed.get()));
    return;
  }
  Variant converted;
  if (FAILED(VariantChangeTypeEx(converted.put(), const_cast<VARIANT*>(changed.get()),
                                 LOCALE_USER_DEFAULT, 0, type))) {
    return;
  }
  if (type == VT_BSTR) return StoreText(converted, given.pbstrVal);
  if (type == VT_DISPATCH || type == VT_UNKNOWN) return StoreObject(converted, given.ppunkVal);
  std::memcpy(given.byref, &converted->lVal, PlainSize(type));
}

}  // namespace

HandlerArguments::HandlerArguments(std::span<const Variant> before, DISPPARAMS& parameters)
    : given_(parameters), copies_(parameters.cArgs + before.size()) {
  for (UINT i = 0; i < parameters.cArgs; ++i) {
    VariantCopyInd(copies_[i].put(), &parameters.rgvarg[i]);
  }
  for (size_t i = 0; i < before.size(); ++i) {
    VariantCopy(copies_[copies_.size() - 1 - i].put(), const_cast<VARIANT*>(before[i].get()));
  }
  references_.resize(copies_.size());
  for (size_t i = 0; i < copies_.size(); ++i) {
    references_[i].vt = VT_BYREF | VT_VARIANT;
    references_[i].pvarVal = copies_[i].get();
  }
  passed_.rgvarg = references_.data();
  passed_.cArgs = static_cast<UINT>(references_.size());
}

void HandlerArguments::PutBack() noexcept {
  for (UINT i = 0; i < given_.cArgs; ++i) {
    if ((given_.rgvarg[i].vt & VT_BYREF) != 0) Store(copies_[i], given_.rgvarg[i]);
  }
}

}  // namespace qrn::host
