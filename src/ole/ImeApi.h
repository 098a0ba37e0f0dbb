// The input method entries of USER32.DLL and the modes that controls set with them.
#pragma once

#include <windows.h>

#include "ole/Kit.h"

namespace qrn::ole {

// The system's block for input method requests, 56 bytes.
struct ImeStruct {
  UINT fnc;
  WPARAM wParam;
  UINT wCount;
  UINT dchSource;
  UINT dchDest;
  LPARAM lParam1;
  LPARAM lParam2;
  LPARAM lParam3;
};
static_assert(sizeof(ImeStruct) == 56);

// Entries by name; any of them may be missing, and fakes may stand in their place.
struct ImeEntries {
  BOOL(WINAPI* enable)(HWND window, BOOL enable) = nullptr;    // WINNLSEnableIME
  BOOL(WINAPI* get)(HWND window, void* info) = nullptr;        // IMPGetIMEA
  BOOL(WINAPI* set)(HWND window, void* info) = nullptr;        // IMPSetIMEA
  LRESULT(WINAPI* send)(HWND window, LPARAM block) = nullptr;  // SendIMEMessageExA
};
ImeEntries FindImeEntries() noexcept;

// Holds the entries and one request block for the process.
class ImeApi {
 public:
  explicit ImeApi(const ImeEntries& entries) noexcept;

  // Sets one of the _enumImeMode modes for the window. 0, or -1 for a mode that is none, and when
  // the block or the entries are missing.
  int Apply(HWND window, int mode) noexcept;

  // Reads the window's mode. 0, or -1 when it cannot be read; `mode` is then left alone. It is also
  // left alone when the input method names none of the modes.
  int Read(HWND window, int& mode) noexcept;

 private:
  LRESULT Send(HWND window, UINT function, WPARAM wParam) noexcept;

  ImeEntries entries_;
  GlobalBlock block_;
};

}  // namespace qrn::ole
