// The module as a whole: its handle, the count of what keeps it loaded, its type library.
#pragma once

#include <oaidl.h>

#include <atomic>
#include <string>

#include "com/Com.h"

namespace qrn::com {

// Called when the module is loaded, before anything else here is used.
void ModuleStart(HINSTANCE instance) noexcept;
// Called when it is unloaded, after the last object is gone: takes the window classes away.
void ModuleEnd() noexcept;

HINSTANCE ModuleInstance() noexcept;

// The file of a loaded module (null: of the program), whatever the length of its path, up to the
// system's 32,767 characters. Empty for what is no module.
std::wstring PathOf(HMODULE module);

// Everything that keeps the module loaded. Tests end with 0.
extern std::atomic<long> liveObjects;

// Keeps the module loaded as long as it lives: every object and every lock of a class factory
// holds one.
class ModuleLock {
 public:
  ModuleLock() noexcept;
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
  ~ModuleLock();
};
void LockModule() noexcept;
void UnlockModule() noexcept;
// True when nothing holds the module: it may be unloaded.
bool ModuleIsIdle() noexcept;

// Reads the type library from another file than the module; for tests that bring their own.
void UseTypeLibrary(const wchar_t* path);
// The library that a file carries, registered or not; empty when there is none. The system reads
// none at a path of more than 259 characters: the module's own then comes from its resources.
Com<ITypeLib> LibraryIn(const std::wstring& path);
// The type of that id in the module's library; empty when there is none. The library is let go
// when the module becomes idle.
Com<ITypeInfo> TypeInfoOf(const GUID& id) noexcept;

// A class for windows of the module's own, made at first use, gone at ModuleEnd. 0 on failure.
ATOM RegisterModuleClass(WNDCLASSEXW& description) noexcept;

}  // namespace qrn::com
