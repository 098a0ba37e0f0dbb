#include <cstdio>
#include <cstdlib>

#include "platform/CodePage.h"
#include "platform/FatalExit.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

void PrintAndAbort(const char* text) {
  std::fprintf(stderr, "%s\n", CodePageToUtf8(text).c_str());
  std::abort();
}

constinit Seam<FatalExitFunction> fatalExit{&PrintAndAbort};

}  // namespace

void FatalExit(const char* text) noexcept { fatalExit(text); }
FatalExitFunction ReplaceFatalExit(FatalExitFunction function) noexcept {
  return fatalExit.Replace(function);
}

}  // namespace qrn
