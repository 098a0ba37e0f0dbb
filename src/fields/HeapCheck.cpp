#include "fields/HeapCheck.h"

#include <cstdio>

#include "platform/CodePage.h"
#include "platform/Memory.h"
#include "platform/MessageBox.h"

namespace qrn {
namespace {

constexpr char8_t kBadNode[] = u8"far heap err,ヒープの中に異常ノードがあります。%s,%d";
constexpr char8_t kBadBegin[] = u8"far heap err,ヒープの先頭が異常です。%s,%d\n";

const char* FormatOf(HeapState state) {
  return reinterpret_cast<const char*>(state == kHeapBadBegin ? kBadBegin : kBadNode);
}

}  // namespace

int CheckHeap(const QuorinSettings&, const char* file, int line) noexcept {
  const HeapState state = ValidateHeap();
  if (state == kHeapGood) return state;
  // No allocation: this heap would not survive it.
  char format[128];
  CopyUtf8(format, FormatOf(state));
  char text[512];
  std::snprintf(text, sizeof text, format, file, line);
  return ShowBox(text, kSystemModal);
}

}  // namespace qrn
