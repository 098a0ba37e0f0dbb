#include <windows.h>

#include "platform/Beep.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

void SystemBeep(unsigned kind) { MessageBeep(kind); }

constinit Seam<BeepFunction> beep{&SystemBeep};

}  // namespace

void SoundBeep(unsigned kind) noexcept { beep(kind); }
BeepFunction ReplaceBeep(BeepFunction function) noexcept { return beep.Replace(function); }

}  // namespace qrn
