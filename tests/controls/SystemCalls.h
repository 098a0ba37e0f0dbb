// Functions of the system that the test plays: the program's own calls of them come here while it
// lives.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "tests/support/Pinned.h"

namespace qrn::test {

// MessageBoxW: shows nothing and answers.
class PlayedMessageBox : Pinned {
 public:
  // `answer` is IDOK, IDCANCEL, or 0 for a box that cannot be shown.
  explicit PlayedMessageBox(int answer);
  ~PlayedMessageBox();

  // Of the last call.
  HWND owner = nullptr;
  std::wstring text, title;
  UINT kind = 0;
  int calls = 0;
  std::function<void()> onShow;  // while the box is up

 private:
  static int WINAPI Show(HWND owner, LPCWSTR text, LPCWSTR title, UINT kind);

  int answer_;
};

// MessageBeep: keeps count.
class PlayedBeep : Pinned {
 public:
  PlayedBeep();
  ~PlayedBeep();

  // "16 0 " for the kinds of the beeps since the last look.
  std::string Take();
};

}  // namespace qrn::test
