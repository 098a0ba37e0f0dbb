#include "com/Module.h"

#include <oleauto.h>

#include <utility>
#include <vector>

#include "com/Guard.h"

namespace qrn::com {
namespace {

HINSTANCE theInstance;

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

constexpr DWORD kLongestPath = 32768;  // with its NUL

// The same file by names of at most twelve characters each; empty where it has none.
std::wstring ShortPath(const std::wstring& path) {
  std::wstring shorter(kLongestPath, L'\0');
  const std::wstring unlimited = path.starts_with(L"\\\\") ? path : L"\\\\?\\" + path;
  const DWORD length = GetShortPathNameW(unlimited.c_str(), shorter.data(), kLongestPath);
  shorter.resize(length < kLongestPath ? length : 0);
  return shorter;
}

}  // namespace

std::atomic<long> liveObjects;

std::wstring PathOf(HMODULE module) {
  std::wstring path(kLongestPath, L'\0');
  const DWORD length = GetModuleFileNameW(module, path.data(), kLongestPath);
  path.resize(length < kLongestPath ? length : 0);
  return path;
}

Com<ITypeLib> LibraryIn(const std::wstring& path) {
  Com<ITypeLib> library;
  if (SUCCEEDED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put()))) return library;
  const std::wstring shorter = path.size() < MAX_PATH ? L"" : ShortPath(path);
  if (!shorter.empty()) LoadTypeLibEx(shorter.c_str(), REGKIND_NONE, library.put());
  return library;
}

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

void LockModule() noexcept { ++liveObjects; }

void UnlockModule() noexcept {
  if (--liveObjects == 0 && thePossessions) thePossessions->library.reset();
}

bool ModuleIsIdle() noexcept { return liveObjects == 0; }

void UseTypeLibrary(const wchar_t* path) {
  Mine().libraryPath = path;
  Mine().library.reset();
}

Com<ITypeInfo> TypeInfoOf(const GUID& id) noexcept {
  Com<ITypeInfo> info;
  Guard([&]() -> HRESULT {
    Possessions& mine = Mine();
    if (!mine.library) {
      mine.library = LibraryIn(mine.libraryPath.empty() ? PathOf(theInstance) : mine.libraryPath);
      if (!mine.library) return TYPE_E_CANTLOADLIBRARY;
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
