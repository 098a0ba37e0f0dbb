#include <cstdio>

#include "platform/CodePage.h"
#include "platform/MessageBox.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

int PrintBox(const char* text, unsigned) {
  std::fprintf(stderr, "%s\n", CodePageToUtf8(text).c_str());
  return kBoxOk;
}

constinit Seam<ShowBoxFunction> box{&PrintBox};

}  // namespace

int ShowBox(const char* text, unsigned flags) noexcept { return box(text, flags); }
ShowBoxFunction ReplaceShowBox(ShowBoxFunction function) noexcept { return box.Replace(function); }

}  // namespace qrn
