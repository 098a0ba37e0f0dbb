#include <cstdio>
#include <cstdlib>

#include "BuiltModule_win.h"
#include "FlatApi.h"
#include "platform/Utf.h"

// clang-format off: windows.h comes first.
#include <oleauto.h>
#include <windows.h>
// clang-format on

namespace qrn::test {
namespace {

HMODULE loaded = nullptr;

template <class Function>
void Find(Function& function, const char* name) {
  function = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(loaded, name)));
  if (function != nullptr) return;
  std::fprintf(stderr, "the module does not export %s\n", name);
  std::abort();
}

FlatApi FindAll() {
  FlatApi api{};
#define QRN_FIND(result, name, arguments) Find(api.name, #name);
  QRN_FUNCTIONS(QRN_FIND)
#undef QRN_FIND
  return api;
}

// Null takes the setting away.
void WriteSetting(const char* key, const char* value) {
  WritePrivateProfileStringA("quorin350", key, value, "quorin.ini");
}

// Other programs on this system go by the same file: at the end it is as if nothing had been set.
struct SettingsTakenBack {
  ~SettingsTakenBack() {
    WriteSetting("fix_str_addr", nullptr);
    WriteSetting("v1fx_unicode", nullptr);
  }
};

}  // namespace

const wchar_t* ModulePath() {
  static const std::wstring path = [] {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::wstring whole = program;
    return whole.substr(0, whole.find_last_of(L'\\') + 1) + L"qrnbt350.ocx";
  }();
  return path.c_str();
}

HMODULE LoadModule() {
  if (loaded != nullptr) FreeLibrary(loaded);
  loaded = LoadLibraryW(ModulePath());
  if (loaded != nullptr) return loaded;
  std::fprintf(stderr, "cannot load the module: error %lu\n", GetLastError());
  std::abort();
}

const FlatApi& FreshFlatApi(const TextSettings& settings) {
  static FlatApi api{};
  static const SettingsTakenBack takenBack;
  if (api.DbTerminate != nullptr) api.DbTerminate();
  WriteSetting("fix_str_addr", std::to_string(settings.fixedArea).c_str());
  WriteSetting("v1fx_unicode", std::to_string(settings.unicode).c_str());
  LoadModule();
  api = FindAll();
  return api;
}

std::string TakeUnits(void* text) {
  const auto string = static_cast<BSTR>(text);
  const std::string result =
      Utf16ToUtf8({reinterpret_cast<const char16_t*>(string), SysStringLen(string)});
  SysFreeString(string);
  return result;
}

std::string TakeBytes(void* text) {
  const auto string = static_cast<BSTR>(text);
  const std::string result(reinterpret_cast<const char*>(string), SysStringByteLen(string));
  SysFreeString(string);
  return result;
}

}  // namespace qrn::test
