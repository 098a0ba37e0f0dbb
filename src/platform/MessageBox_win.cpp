#include <windows.h>

#include "platform/MessageBox.h"

namespace qrn {

static_assert(kTaskModal == MB_TASKMODAL && kSystemModal == MB_SYSTEMMODAL && kBoxOk == IDOK);
static_assert(kBeepWarning == MB_ICONEXCLAMATION);

int ShowSystemBox(const char* text, unsigned flags) noexcept {
  return MessageBoxA(nullptr, text, nullptr, flags);
}

void SoundSystemBeep(unsigned kind) noexcept { MessageBeep(kind); }

void SystemFatalExit(const char* text) noexcept {
  constexpr UINT kAction = 1;  // no debugger is offered: the process ends
  FatalAppExitA(kAction, text);
}

}  // namespace qrn
