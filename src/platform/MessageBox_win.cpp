#include <windows.h>

#include "platform/MessageBox.h"

namespace qrn {

static_assert(kTaskModal == MB_TASKMODAL && kSystemModal == MB_SYSTEMMODAL && kBoxOk == IDOK);

int ShowSystemBox(const char* text, unsigned flags) noexcept {
  return MessageBoxA(nullptr, text, nullptr, flags);
}

}  // namespace qrn
