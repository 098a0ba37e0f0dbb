#include "controls/text/CharacterMask.h"

#include "core/DbTypes.h"

namespace qrn {
namespace {}  // namespace

bool MaskAllows(char16_t character, int32_t fieldType) noexcept {
  if (character >= u'0' && character <= u'9') return true;
  if (character >= u'+' && character <= u'.') return true;
  if (character == u'/') return fieldType == kDate;
  if (character == u':') return fieldType == kTime;
  return character == kBackspace;
}

}  // namespace qrn
