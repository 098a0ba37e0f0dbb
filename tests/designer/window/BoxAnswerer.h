// Answers every box, dialog and frame of property pages that comes while it lives, as somebody does
// who does not want to be asked.
#pragma once

#include <windows.h>

#include <atomic>
#include <thread>

#include "host/user/Dialogs.h"

namespace qrn::test {

class BoxAnswerer {
 public:
  BoxAnswerer() : thread_([this] { Run(); }) {}
  BoxAnswerer(const BoxAnswerer&) = delete;
  BoxAnswerer& operator=(const BoxAnswerer&) = delete;
  ~BoxAnswerer() {
    ended_ = true;
    thread_.join();
  }

 private:
  void Run() {
    constexpr DWORD kLookMs = 20;
    while (!ended_) {
      Sleep(kLookMs);
      HWND box = host::FrontBox();
      if (!box) box = FindWindowW(L"QrnPropertyFrame", nullptr);
      if (!box) continue;
      HWND cancel = GetDlgItem(box, IDCANCEL);
      PostMessageW(box, WM_COMMAND, cancel ? IDCANCEL : IDOK, 0);
    }
  }

  std::atomic<bool> ended_ = false;
  std::thread thread_;
};

}  // namespace qrn::test
