// Functions of the system that the test plays: the program's own calls of them come here while it
// lives.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>

#include "tests/support/Pinned.h"

namespace qrn::test {

// Puts a function into a slot of the import table; gives the former.
template <class Function>
Function Exchange(Function& slot, Function function) {
  DWORD before = 0;
  VirtualProtect(&slot, sizeof slot, PAGE_READWRITE, &before);
  const Function former = std::exchange(slot, function);
  VirtualProtect(&slot, sizeof slot, before, &before);
  return former;
}

// MessageBoxW: shows nothing and answers.
class PlayedMessageBox : Pinned {
 public:
  // `answer` is IDOK, IDCANCEL, or 0 for a box that cannot be shown.
  explicit PlayedMessageBox(int answer) : answer_(answer) {
    playing_ = this;
    real_ = Exchange(__imp_MessageBoxW, &Show);
  }
  ~PlayedMessageBox() { Exchange(__imp_MessageBoxW, real_); }

  // Of the last call.
  HWND owner = nullptr;
  std::wstring text, title;
  UINT kind = 0;
  int calls = 0;
  std::function<void()> onShow;  // while the box is up

 private:
  static int WINAPI Show(HWND owner, LPCWSTR text, LPCWSTR title, UINT kind) {
    playing_->owner = owner;
    playing_->text = text;
    playing_->title = title;
    playing_->kind = kind;
    ++playing_->calls;
    if (playing_->onShow) playing_->onShow();
    return playing_->answer_;
  }

  static inline PlayedMessageBox* playing_ = nullptr;
  static inline decltype(&MessageBoxW) real_ = nullptr;
  int answer_;
};

// MessageBeep: keeps count.
class PlayedBeep : Pinned {
 public:
  PlayedBeep() {
    beeps_.clear();
    real_ = Exchange(__imp_MessageBeep, &Note);
  }
  ~PlayedBeep() { Exchange(__imp_MessageBeep, real_); }

  // "16 0 " for the kinds of the beeps since the last look.
  std::string Take() { return std::exchange(beeps_, {}); }

 private:
  static BOOL WINAPI Note(UINT kind) {
    beeps_ += std::to_string(kind) + " ";
    return TRUE;
  }

  static inline decltype(&MessageBeep) real_ = nullptr;
  static inline std::string beeps_;
};

}  // namespace qrn::test
