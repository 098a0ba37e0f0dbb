#include <windows.h>

#include "platform/MessageBox.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

static_assert(kTaskModal == MB_TASKMODAL && kSystemModal == MB_SYSTEMMODAL && kBoxOk == IDOK);

int ShowSystemBox(const char* text, unsigned flags) {
  return MessageBoxA(nullptr, text, nullptr, flags);
}

constinit Seam<ShowBoxFunction> box{&ShowSystemBox};

}  // namespace

int ShowBox(const char* text, unsigned flags) noexcept { return box(text, flags); }
ShowBoxFunction ReplaceShowBox(ShowBoxFunction function) noexcept { return box.Replace(function); }

}  // namespace qrn
