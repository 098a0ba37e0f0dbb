#include <cstdio>
#include <cstdlib>
#include <string>

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
  Find(api.Initialize, "DbInitialize");
  Find(api.Terminate, "DbTerminate");
  Find(api.SetOpenMode, "DbSetOpenMode");
  Find(api.SetOwnerName, "DbSetOwnerName");
  Find(api.GetNumOfTable, "DbGetNumOfTable");
  Find(api.GetNumOfField, "DbGetNumOfField");
  Find(api.GetDataSize, "DbGetDataSize");
  Find(api.GetDataType, "DbGetDataType");
  Find(api.GetVersion, "DbGetVersion");
  Find(api.Open, "DbOpen");
  Find(api.Close, "DbClose");
  Find(api.Create, "DbCreate");
  Find(api.GetNumOfRecords, "DbGetNumOfRecords");
  Find(api.Access, "DbAccess");
  Find(api.GetPosition, "DbGetPosition");
  Find(api.GetDirect, "DbGetDirect");
  Find(api.GetByPercentage, "DbGetByPercentage");
  Find(api.FindPercentage, "DbFindPercentage");
  Find(api.Unlock, "DbUnlock");
  Find(api.ClearFieldBuffer, "DbClearFieldBuffer");
  Find(api.SetFieldData, "DbSetFieldData");
  Find(api.BeginTransaction, "DbBeginTransaction");
  Find(api.BeginConCurTransaction, "DbBeginConCurTransaction");
  Find(api.EndTransaction, "DbEndTransaction");
  Find(api.AbortTransaction, "DbAbortTransaction");
  Find(api.GetFieldData, "DbGetFieldData");
  Find(api.GetFieldName, "DbGetFieldName");
  Find(api.GetTableName, "DbGetTableName");
  Find(api.SetFormattedString, "DbSetFormattedString");
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
  if (api.Terminate != nullptr) api.Terminate();
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
