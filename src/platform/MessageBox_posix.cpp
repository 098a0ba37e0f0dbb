#include <cstdio>
#include <cstdlib>
#include <new>

#include "platform/CodePage.h"
#include "platform/MessageBox.h"

namespace qrn {

// Without memory the bytes come as they are: the message may well be that there is none.
int ShowSystemBox(const char* text, unsigned) noexcept {
  try {
    std::fprintf(stderr, "%s\n", CodePageToUtf8(text).c_str());
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "%s\n", text);
  }
  return kBoxOk;
}

void SoundSystemBeep(unsigned) noexcept { std::fputc('\a', stderr); }

void SystemFatalExit(const char* text) noexcept {
  ShowSystemBox(text, kTaskModal);
  std::abort();
}

}  // namespace qrn
