#include "Boxes.h"

#include <windows.h>

#include <utility>

#include "platform/Utf.h"

namespace qrn::test {
namespace {

constexpr int kBoxText = 0xFFFF;

BOOL CALLBACK NoteBox(HWND window, LPARAM found) {
  wchar_t name[16] = {};
  DWORD process = 0;
  GetClassNameW(window, name, 16);
  GetWindowThreadProcessId(window, &process);
  const bool box = process == GetCurrentProcessId() && wcscmp(name, L"#32770") == 0;
  if (!box || !IsWindowVisible(window)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

std::string BoxText(const wchar_t* text) {
  return Utf16ToUtf8(reinterpret_cast<const char16_t*>(text));
}

}  // namespace

Boxes::Boxes(int answer) : answer_(answer), watcher_([this] { Watch(); }) {}

Boxes::~Boxes() {
  over_ = true;
  watcher_.join();
}

std::string Boxes::Take() {
  const std::lock_guard lock(mutex_);
  return std::exchange(said_, {});
}

void Boxes::Watch() {
  for (; !over_; Sleep(5)) {
    HWND box = nullptr;
    EnumWindows(&NoteBox, reinterpret_cast<LPARAM>(&box));
    if (box == nullptr) continue;
    wchar_t title[64] = {};
    wchar_t text[512] = {};
    GetWindowTextW(box, title, 64);
    GetDlgItemTextW(box, kBoxText, text, 512);
    {
      const std::lock_guard lock(mutex_);
      said_ += BoxText(title) + "|" + BoxText(text) + "; ";
    }
    PostMessageW(box, answer_ == kCloses ? WM_CLOSE : WM_COMMAND, static_cast<WPARAM>(answer_), 0);
    while (!over_ && IsWindow(box) && IsWindowVisible(box)) Sleep(2);
  }
}

}  // namespace qrn::test
