#include "host/container/Text.h"

#include "com/Variant.h"

namespace qrn::host {
namespace {

constexpr LCID kPlainLocale = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

bool IsDate(const VARIANT& value) noexcept { return value.vt == VT_DATE; }

}  // namespace

bool SameName(std::wstring_view left, std::wstring_view right) noexcept {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                              static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

std::wstring ValueAsText(const VARIANT& value) {
  com::Variant plain;
  if (FAILED(VariantCopyInd(plain.put(), const_cast<VARIANT*>(&value)))) return L"";
  if (plain.type() == VT_BOOL) return plain->boolVal ? L"True" : L"False";
  if (plain.type() == VT_NULL) return L"Null";
  com::Variant text;
  const LCID locale = IsDate(*plain.get()) ? LOCALE_USER_DEFAULT : kPlainLocale;
  if (FAILED(VariantChangeTypeEx(text.put(), plain.get(), locale, 0, VT_BSTR))) return L"";
  return std::wstring(text->bstrVal ? text->bstrVal : L"", SysStringLen(text->bstrVal));
}

}  // namespace qrn::host
