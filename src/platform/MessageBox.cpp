#include "platform/MessageBox.h"

#include "platform/Seam.h"

namespace qrn {
namespace {

constinit Seam<ShowBoxFunction> box{&ShowSystemBox};
constinit int boxesUp = 0;

}  // namespace

int ShowBox(const char* text, unsigned flags) noexcept {
  ++boxesUp;
  const int answer = box(text, flags);
  --boxesUp;
  return answer;
}

bool IsBoxUp() noexcept { return boxesUp != 0; }
ShowBoxFunction ReplaceShowBox(ShowBoxFunction function) noexcept { return box.Replace(function); }

}  // namespace qrn
