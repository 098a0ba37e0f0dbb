#include "platform/MessageBox.h"

#include "platform/Seam.h"

namespace qrn {
namespace {

constinit Seam<ShowBoxFunction> box{&ShowSystemBox};
constinit Seam<BeepFunction> beep{&SoundSystemBeep};
constinit Seam<FatalExitFunction> fatalExit{&SystemFatalExit};
constinit int boxesUp = 0;

}  // namespace

int ShowBox(const char* text, unsigned flags) noexcept {
  ++boxesUp;
  const int answer = box(text, flags);
  --boxesUp;
  return answer;
}

bool IsBoxUp() noexcept { return boxesUp != 0; }
void SoundBeep(unsigned kind) noexcept { beep(kind); }
void FatalExit(const char* text) noexcept { fatalExit(text); }

ShowBoxFunction ReplaceShowBox(ShowBoxFunction function) noexcept { return box.Replace(function); }
BeepFunction ReplaceBeep(BeepFunction function) noexcept { return beep.Replace(function); }
FatalExitFunction ReplaceFatalExit(FatalExitFunction function) noexcept {
  return fatalExit.Replace(function);
}

}  // namespace qrn
