#include "com/Module.h"

#include <oleauto.h>

#include <atomic>
#include <string>
#include <utility>
#include <vector>

#include "com/Guard.h"

namespace qrn::com {
namespace {

HINSTANCE theInstance;
std::atomic<long> theLocks;

// What the module keeps for itself. Made at first use and dropped by ModuleEnd, never by a static
// destructor: when a process ends, the modules that its content belongs to may be gone already.
struct Possessions {
  std::wstring libraryPath;  // empty: the module's own file
  Com<ITypeLib> library;
  std::vector<std::wstring> windowClasses;
};
Possessions* thePossessions;

Possessions& Mine() {
  if (!thePossessions) thePossessions = new Possessions;
  return *thePossessions;
}

std::wstring ModulePath() {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(theInstance, path, MAX_PATH);
  return std::wstring(path, length < MAX_PATH ? length : 0);
}

}  // namespace

void ModuleStart(HINSTANCE instance) noexcept { theInstance = instance; }

void ModuleEnd() noexcept {
  if (!thePossessions || !ModuleIsIdle()) return;
  for (const std::wstring& name : Mine().windowClasses) {
    UnregisterClassW(name.c_str(), ModuleInstance());
  }
  delete std::exchange(thePossessions, nullptr);
}

HINSTANCE ModuleInstance() noexcept {
  return theInstance ? theInstance : GetModuleHandleW(nullptr);
}

ModuleLock::ModuleLock() noexcept { LockModule(); }
ModuleLock::~ModuleLock() { UnlockModule(); }

void LockModule() noexcept { ++theLocks; }

void UnlockModule() noexcept {
  if (--theLocks == 0 && thePossessions) thePossessions->library.reset();
}

bool ModuleIsIdle() noexcept { return theLocks == 0; }

void UseTypeLibrary(const wchar_t* path) {
  Mine().libraryPath = path;
  Mine().library.reset();
}

Com<ITypeInfo> TypeInfoOf(const GUID& id) noexcept {
  Com<ITypeInfo> info;
  Guard([&] {
    Possessions& mine = Mine();
    if (!mine.library) {
      const std::wstring path = mine.libraryPath.empty() ? ModulePath() : mine.libraryPath;
      Check(LoadTypeLibEx(path.c_str(), REGKIND_NONE, mine.library.put()));
    }
    return mine.library->GetTypeInfoOfGuid(id, info.put());
  });
  return info;
}

ATOM RegisterModuleClass(WNDCLASSEXW& description) noexcept {
  description.cbSize = sizeof description;
  description.hInstance = ModuleInstance();
  const ATOM made = RegisterClassExW(&description);
  if (made) {
    Guard([&] {
      Mine().windowClasses.push_back(description.lpszClassName);
      return S_OK;
    });
  }
  return made;
}

}  // namespace qrn::com
