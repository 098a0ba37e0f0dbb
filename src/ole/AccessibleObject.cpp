#include "ole/AccessibleObject.h"

namespace qrn::ole {
namespace {

// The system's library for all this, in its own words LIBID_Accessibility: a name that a linker may
// take for a function of another library.
constexpr GUID kLibrary{
    0x1EA4DBF0, 0x3C3B, 0x11CF, {0x81, 0x0C, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};

}  // namespace

bool AsksForContent(const Message& message) noexcept {
  return static_cast<LONG>(message.lParam) == OBJID_CLIENT;
}

bool AnswerWith(const Com<IAccessible>& object, Message& message) {
  if (!object) return false;
  message.result = LresultFromObject(__uuidof(IAccessible), message.wParam, object.get());
  return true;
}

VARIANT ChildNumber(const VARIANT& child) noexcept {
  VARIANT number = child;
  const bool leftOut =
      child.vt == VT_EMPTY || (child.vt == VT_ERROR && child.scode == DISP_E_PARAMNOTFOUND);
  if (leftOut || child.vt == VT_I2) {
    number.vt = VT_I4;
    number.lVal = leftOut ? CHILDID_SELF : child.iVal;
  }
  return child.vt == (VT_BYREF | VT_VARIANT) ? ChildNumber(*child.pvarVal) : number;
}

bool IsSelf(const VARIANT& child) noexcept {
  const VARIANT number = ChildNumber(child);
  return number.vt == VT_I4 && number.lVal == CHILDID_SELF;
}

HRESULT FindAccessibleType(LCID locale, ITypeInfo** info) noexcept {
  Com<ITypeLib> library;
  const HRESULT loaded = LoadRegTypeLib(kLibrary, 1, 1, locale, library.put());
  return FAILED(loaded) ? loaded : library->GetTypeInfoOfGuid(__uuidof(IAccessible), info);
}

}  // namespace qrn::ole
