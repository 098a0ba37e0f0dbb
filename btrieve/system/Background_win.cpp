#include <windows.h>

#include <new>

#include "btrieve/system/Background.h"

namespace btrieve {
namespace {

struct Start {
  void (*body)();
  HMODULE module;
};

DWORD WINAPI Run(void* argument) {
  const Start start = *static_cast<Start*>(argument);
  delete static_cast<Start*>(argument);
  start.body();
  FreeLibraryAndExitThread(start.module, 0);
}

}  // namespace

bool StartThread(void (*body)()) noexcept {
  HMODULE module = nullptr;
  if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                          reinterpret_cast<LPCWSTR>(&StartThread), &module)) {
    return false;
  }
  auto* start = new (std::nothrow) Start{body, module};
  const HANDLE thread = start ? CreateThread(nullptr, 0, Run, start, 0, nullptr) : nullptr;
  if (thread) {
    CloseHandle(thread);
    return true;
  }
  delete start;
  FreeLibrary(module);
  return false;
}

bool ProcessIsEnding() noexcept {
  using Asks = BOOLEAN(WINAPI*)();
  static const auto ask = reinterpret_cast<Asks>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlDllShutdownInProgress")));
  return ask && ask();
}

}  // namespace btrieve
