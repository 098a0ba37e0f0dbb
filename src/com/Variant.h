// A VARIANT that clears itself.
#pragma once

#include <oaidl.h>
#include <oleauto.h>

#include "com/Bstr.h"
#include "com/Com.h"

namespace qrn::com {

class Variant {
 public:
  Variant() noexcept = default;
  explicit Variant(Bstr text) noexcept : Variant() {
    value_.vt = VT_BSTR;
    value_.bstrVal = text.detach();
  }
  explicit Variant(int16_t number) noexcept : Variant() {
    value_.vt = VT_I2;
    value_.iVal = number;
  }
  explicit Variant(int32_t number) noexcept : Variant() {
    value_.vt = VT_I4;
    value_.lVal = number;
  }
  explicit Variant(Com<IDispatch> object) noexcept : Variant() {
    value_.vt = VT_DISPATCH;
    value_.pdispVal = object.detach();
  }
  static Variant Bool(bool yes) noexcept {
    Variant made;
    made.value_.vt = VT_BOOL;
    made.value_.boolVal = yes ? VARIANT_TRUE : VARIANT_FALSE;
    return made;
  }
  Variant(Variant&& other) noexcept : value_(other.release()) {}
  Variant& operator=(Variant&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Variant() { VariantClear(&value_); }

  VARTYPE type() const noexcept { return value_.vt; }
  VARIANT* get() noexcept { return &value_; }
  const VARIANT* get() const noexcept { return &value_; }
  VARIANT* operator->() noexcept { return &value_; }
  const VARIANT* operator->() const noexcept { return &value_; }

  // For out parameters: what was held is cleared first.
  VARIANT* put() noexcept {
    VariantClear(&value_);
    value_ = VARIANT{};
    return &value_;
  }
  // Gives the content away to `place`; what stood there is cleared.
  void moveTo(VARIANT& place) noexcept {
    VariantClear(&place);
    place = release();
  }
  // Gives the content away; this one is empty afterwards.
  VARIANT release() noexcept { return std::exchange(value_, VARIANT{}); }
  // The same value in another type, following references; the result says what failed.
  HRESULT as(VARTYPE type, Variant& out) const noexcept {
    Variant plain;
    HRESULT result = VariantCopyInd(plain.put(), const_cast<VARIANT*>(&value_));
    if (FAILED(result)) return result;
    return VariantChangeTypeEx(out.put(), plain.get(), LOCALE_USER_DEFAULT, 0, type);
  }

 private:
  VARIANT value_{};  // all bytes 0 beside the type
};

}  // namespace qrn::com
