#include "com/Module.h"

#include <oleauto.h>

#include <filesystem>
#include <fstream>
#include <span>
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

std::span<const char> LibraryResource() {
  const HRSRC found = FindResourceW(theInstance, MAKEINTRESOURCEW(1), L"TYPELIB");
  const HGLOBAL loaded = found ? LoadResource(theInstance, found) : nullptr;
  if (!loaded) return {};
  return {static_cast<const char*>(LockResource(loaded)), SizeofResource(theInstance, found)};
}

// By way of a file in the temporary folder: the system reads libraries from files alone. One that
// it keeps open stays there.
Com<ITypeLib> OwnLibraryFromResources() {
  Com<ITypeLib> library;
  const std::span<const char> bytes = LibraryResource();
  wchar_t folder[MAX_PATH + 1] = {};
  wchar_t file[MAX_PATH + 1] = {};
  if (bytes.empty() || GetTempPathW(MAX_PATH, folder) == 0) return library;
  if (GetTempFileNameW(folder, L"qrn", 0, file) == 0) return library;
  std::ofstream(std::filesystem::path(file), std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  LoadTypeLibEx(file, REGKIND_NONE, library.put());
  DeleteFileW(file);
  return library;
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
  if (path == PathOf(theInstance)) library = OwnLibraryFromResources();
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
