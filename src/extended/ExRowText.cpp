#include "extended/ExRowText.h"

#include "extended/ExRow.h"
#include "platform/CodePage.h"
#include "qrnbt350.h"

namespace qrn {
namespace {

char rowText[kLineLength + 1];

}  // namespace

char* BeginExRowText() noexcept {
  rowText[0] = '\0';
  return rowText;
}

extern "C" int32_t DbExSetFormattedString(const char* text) noexcept {
  CopyText(rowText, text != nullptr ? text : "");
  return 0;
}

}  // namespace qrn
