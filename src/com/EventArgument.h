// Values as arguments of an event. Nothing is copied: they live as long as the call.
#pragma once

#include <oaidl.h>

#include <cstdint>

#include "com/Bstr.h"

namespace qrn::com {

namespace detail {
inline VARIANT Typed(VARTYPE type) noexcept {
  VARIANT value{};
  value.vt = type;
  return value;
}
inline VARIANT Reference(VARTYPE type, void* place) noexcept {
  VARIANT value = Typed(type | VT_BYREF);
  value.byref = place;
  return value;
}
}  // namespace detail

inline VARIANT EventArgument(int16_t number) noexcept {
  VARIANT value = detail::Typed(VT_I2);
  value.iVal = number;
  return value;
}
inline VARIANT EventArgument(int32_t number) noexcept {
  VARIANT value = detail::Typed(VT_I4);
  value.intVal = number;
  return value;
}
inline VARIANT EventArgument(float number) noexcept {
  VARIANT value = detail::Typed(VT_R4);
  value.fltVal = number;
  return value;
}
inline VARIANT EventArgument(BSTR text) noexcept {
  VARIANT value = detail::Typed(VT_BSTR);
  value.bstrVal = text;
  return value;
}
inline VARIANT EventArgument(int16_t* place) noexcept { return detail::Reference(VT_I2, place); }
inline VARIANT EventArgument(int32_t* place) noexcept { return detail::Reference(VT_I4, place); }
inline VARIANT EventArgument(Bstr* place) noexcept {
  return detail::Reference(VT_BSTR, place->place());
}

}  // namespace qrn::com
