#include "extended/ExRowText.h"

#include "extended/ExRow.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

char rowText[kLineLength + 1];

}  // namespace

char* BeginExRowText() noexcept {
  rowText[0] = '\0';
  return rowText;
}

namespace flat {

int32_t DbExSetFormattedString(const char* text) noexcept {
  CopyText(rowText, text != nullptr ? text : "");
  return 0;
}

}  // namespace flat
}  // namespace qrn
