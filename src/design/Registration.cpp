#include "design/Registration.h"

#include <oleauto.h>
#include <olectl.h>

#include <string>
#include <vector>

#include "binding/tables/AllTables.h"
#include "com/Com.h"
#include "com/Module.h"
#include "design/ClassesHive.h"
#include "design/ObjectTable.h"
#include "design/TypeLibraryKeys.h"
#include "ole/Registrar.h"
#include "ole/SystemGuid.h"

namespace qrn::design {
namespace {

using com::Com;
using ole::RegistryKey;

constexpr UINT kScriptCodePage = 932;

std::wstring ModulePath() { return com::PathOf(com::ModuleInstance()); }

std::string_view ResourceBytes(uint16_t id, const wchar_t* type) {
  const HMODULE module = com::ModuleInstance();
  const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), type);
  const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
  if (!loaded) return {};
  return {static_cast<const char*>(LockResource(loaded)), SizeofResource(module, found)};
}

std::u16string Widen(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::u16string wide(text.size(), u'\0');
  wide.resize(static_cast<size_t>(MultiByteToWideChar(
      kScriptCodePage, 0, text.data(), size, reinterpret_cast<wchar_t*>(wide.data()), size)));
  return wide;
}

// The keys of a script resource; none where it is missing or does not read.
std::vector<RegistryKey> Script(uint16_t id) {
  const std::wstring path = ModulePath();
  const ole::Replacements replacements{{u"MODULE", std::u16string(path.begin(), path.end())}};
  ole::ScriptError error;
  auto keys = ole::ReadRegistryScript(Widen(ResourceBytes(id, L"REGISTRY")), replacements, error);
  return keys.value_or(std::vector<RegistryKey>());
}

bool AddScript(HKEY classes, uint16_t id) {
  const auto keys = Script(id);
  return !keys.empty() && ole::Registrar(classes).Add(keys) == ERROR_SUCCESS;
}

bool AddScripts(HKEY classes) {
  bool done = AddScript(classes, kApplicationScript);
  for (const ole::ClassRow& row : Objects()) done = done && AddScript(classes, row.script);
  return done;
}

bool RemoveScripts(HKEY classes) {
  const ole::Registrar registrar(classes);
  bool done = true;
  for (const ole::ClassRow& row : Objects()) {
    done = registrar.Remove(Script(row.script)) == ERROR_SUCCESS && done;
  }
  return registrar.Remove(Script(kApplicationScript)) == ERROR_SUCCESS && done;
}

std::vector<RegistryKey> LibraryKeys() {
  const std::wstring path = ModulePath();
  return TypeLibraryKeys(kLibrary, std::u16string(path.begin(), path.end()));
}

// Empty where the system does not read the module as a library, as at a path of more than 259
// characters.
Com<ITypeLib> OwnLibrary(const std::wstring& path) {
  Com<ITypeLib> library;
  return SUCCEEDED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put())) ? library
                                                                             : Com<ITypeLib>();
}

bool AddForMachine() {
  std::wstring path = ModulePath();
  const Com<ITypeLib> library = OwnLibrary(path);
  return library && SUCCEEDED(RegisterTypeLib(library.get(), path.data(), nullptr));
}

bool AddTypeLibrary(const ClassesHive& hive) {
  if (hive.hive() == Hive::Machine) return AddForMachine();
  return ole::Registrar(hive.get()).Add(LibraryKeys()) == ERROR_SUCCESS;
}

bool HasTypeLibrary(HKEY classes) {
  const std::string id = GuidText(kLibrary.id);
  const std::wstring name = L"TypeLib\\" + std::wstring(id.begin(), id.end());
  com::Key key;
  return RegOpenKeyExW(classes, name.c_str(), 0, KEY_READ, key.put()) == ERROR_SUCCESS;
}

bool RemoveTypeLibrary(const ClassesHive& hive) {
  if (hive.hive() == Hive::User) {
    return ole::Registrar(hive.get()).Remove(LibraryKeys()) == ERROR_SUCCESS;
  }
  return !HasTypeLibrary(hive.get()) ||
         SUCCEEDED(UnRegisterTypeLib(ole::AsGuid(kLibrary.id), kLibrary.major, kLibrary.minor,
                                     LOCALE_NEUTRAL, SYS_WIN64));
}

// An error only where the place is open: what the user may not write there was not put there.
bool RemoveFrom(Hive which) {
  const ClassesHive hive(which, Purpose::Remove);
  if (!hive.open()) return true;
  const bool library = RemoveTypeLibrary(hive);
  return RemoveScripts(hive.get()) && library;
}

HRESULT AddTo(const ClassesHive& hive) {
  if (!hive.open()) return SELFREG_E_CLASS;
  HRESULT result = AddScripts(hive.get()) ? S_OK : SELFREG_E_CLASS;
  if (SUCCEEDED(result) && !AddTypeLibrary(hive)) result = SELFREG_E_TYPELIB;
  return result;
}

HRESULT RegisterIn(Hive which) {
  const HRESULT result = AddTo(ClassesHive(which, Purpose::Add));
  if (FAILED(result)) RemoveFrom(which);
  return result;
}

}  // namespace

// A library that nobody could read is no reason to try the user's classes. Those that stand there
// from before, maybe for another file, would go before the machine's.
HRESULT RegisterModule() {
  if (!OwnLibrary(ModulePath())) return SELFREG_E_TYPELIB;
  const HRESULT result = RegisterIn(Hive::Machine);
  if (FAILED(result)) return RegisterIn(Hive::User);
  RemoveFrom(Hive::User);
  return result;
}

HRESULT UnregisterModule() {
  const bool user = RemoveFrom(Hive::User);
  return RemoveFrom(Hive::Machine) && user ? S_OK : SELFREG_E_CLASS;
}

}  // namespace qrn::design
