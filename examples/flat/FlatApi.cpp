#include "FlatApi.h"

#include <oleauto.h>

#include <cstdio>
#include <cstdlib>

namespace tour {
namespace {

constexpr UINT kCodePage = 932;

std::wstring Widen(const std::string& text, UINT codePage) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(MultiByteToWideChar(codePage, 0, text.data(), length, wide.data(), length));
  return wide;
}

std::string Narrow(const std::wstring& wide, UINT codePage) {
  const int length = static_cast<int>(wide.size());
  std::string text(wide.size() * 4, '\0');
  text.resize(WideCharToMultiByte(codePage, 0, wide.data(), length, text.data(),
                                  static_cast<int>(text.size()), nullptr, nullptr));
  return text;
}

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

}  // namespace

FlatApi::FlatApi() {
  const HMODULE module = LoadLibraryA("qrnbt350.ocx");
  if (module == nullptr) Fail("qrnbt350.ocx could not be loaded");
#define TOUR_LOOK_UP(result, name, arguments)                       \
  name = reinterpret_cast<decltype(name)>(                          \
      reinterpret_cast<void (*)()>(GetProcAddress(module, #name))); \
  if (name == nullptr) Fail("qrnbt350.ocx has no " #name);
  TOUR_EXPORTS(TOUR_LOOK_UP)
#undef TOUR_LOOK_UP
}

std::string ToCodePage(const std::string& utf8) { return Narrow(Widen(utf8, CP_UTF8), kCodePage); }

std::string FromCodePage(const std::string& bytes) {
  return Narrow(Widen(bytes, kCodePage), CP_UTF8);
}

std::string TakeByteText(void* text) {
  const BSTR string = static_cast<BSTR>(text);
  if (string == nullptr) return {};
  const std::string bytes(reinterpret_cast<const char*>(string), SysStringByteLen(string));
  SysFreeString(string);
  return FromCodePage(bytes);
}

std::string TakeWideText(void* text) {
  const BSTR string = static_cast<BSTR>(text);
  if (string == nullptr) return {};
  const std::wstring wide(string, SysStringLen(string));
  SysFreeString(string);
  return Narrow(wide, CP_UTF8);
}

}  // namespace tour
