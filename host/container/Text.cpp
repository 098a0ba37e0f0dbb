#include "host/container/Text.h"

#include "com/Variant.h"

namespace qrn::host {
namespace {

constexpr LCID kPlainLocale = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

bool IsDate(const VARIANT& value) noexcept { return value.vt == VT_DATE; }

}  // namespace

std::wstring Wide(std::string_view utf8) {
  const int length = static_cast<int>(utf8.size());
  const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0);
  std::wstring wide(static_cast<size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), units);
  return wide;
}

std::string Utf8(std::wstring_view wide) {
  const int length = static_cast<int>(wide.size());
  const int bytes =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), bytes, nullptr, nullptr);
  return utf8;
}

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
