#include "platform/CodePage.h"
#include "platform/StringTable.h"

namespace qrn {
namespace {

struct StringRow {
  int id;
  const char* utf8;
};

#define MESSAGE_ROW(id, text) {id, text},
constexpr StringRow kTexts[] = {
#include "resources/Messages.inc"
};
#undef MESSAGE_ROW

}  // namespace

size_t LoadText(int id, std::span<char> out) noexcept {
  for (const StringRow& row : kTexts) {
    if (row.id == id) return CopyUtf8(out, row.utf8);
  }
  return CopyText(out, {});
}

}  // namespace qrn
