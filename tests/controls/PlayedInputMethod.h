// The system's input method, played while it lives.
#pragma once

#include <string>
#include <utility>

#include "binding/InputMethod.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

class PlayedInputMethod : Pinned {
 public:
  PlayedInputMethod() {
    log_.clear();
    TheInputMethod() = ole::ImeApi({&Enable, nullptr, nullptr, &Send});
  }
  ~PlayedInputMethod() { TheInputMethod() = ole::ImeApi(ole::FindImeEntries()); }

  static inline LRESULT mode = 0;  // in force, as the system tells it

  // "enable1 " and "4:1 " for a function and its value, since the last look.
  std::string Take() { return std::exchange(log_, {}); }

 private:
  static BOOL WINAPI Enable(HWND, BOOL enable) {
    log_ += "enable" + std::to_string(enable) + " ";
    return TRUE;
  }
  static LRESULT WINAPI Send(HWND, LPARAM block) {
    const auto handle = reinterpret_cast<HGLOBAL>(block);
    const auto* request = static_cast<const ole::ImeStruct*>(GlobalLock(handle));
    log_ += std::to_string(request->fnc) + ":" + std::to_string(request->wParam) + " ";
    const LRESULT answer = request->fnc == 17 ? mode : 0;
    GlobalUnlock(handle);
    return answer;
  }

  static inline std::string log_;
};

}  // namespace qrn::test
