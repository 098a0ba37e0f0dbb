#include <cstdio>

#include "platform/Beep.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

void RingBell(unsigned) { std::fputc('\a', stderr); }

constinit Seam<BeepFunction> beep{&RingBell};

}  // namespace

void SoundBeep(unsigned kind) noexcept { beep(kind); }
BeepFunction ReplaceBeep(BeepFunction function) noexcept { return beep.Replace(function); }

}  // namespace qrn
