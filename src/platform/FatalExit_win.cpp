#include <windows.h>

#include "platform/FatalExit.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

constexpr UINT kAction = 1;  // no debugger is offered: the process ends

void SystemFatalExit(const char* text) { FatalAppExitA(kAction, text); }

constinit Seam<FatalExitFunction> fatalExit{&SystemFatalExit};

}  // namespace

void FatalExit(const char* text) noexcept { fatalExit(text); }
FatalExitFunction ReplaceFatalExit(FatalExitFunction function) noexcept {
  return fatalExit.Replace(function);
}

}  // namespace qrn
