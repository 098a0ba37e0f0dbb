#include "extended/FieldReference.h"

#include <algorithm>
#include <string>

#include "core/DictionaryLookup.h"
#include "fields/Messages.h"

namespace qrn {
namespace {

int32_t FieldOfNumber(const DbTableInfo& table, int32_t number) {
  if (number < table.FieldCount) return number;
  ShowMessage(kVE025);
  return kNoSuchField;
}

int32_t FieldOfName(const DbTableInfo& table, const std::string& name) {
  const int32_t position = DbFindField(table, name.c_str());
  if (position >= 0) return position;
  ShowMessage(kVE818, name.c_str());
  return kNoSuchField;
}

uint16_t In16Bits(int32_t value, int32_t ifNegative) {
  constexpr int32_t kLargest = 65535;
  return static_cast<uint16_t>(value < 0 ? ifNegative : std::min(value, kLargest));
}

}  // namespace

int32_t TakeFieldReference(const DbTableInfo& table, TextCursor& text, size_t limit) {
  if (text.Peek() >= '0' && text.Peek() <= '9') {
    return FieldOfNumber(table, NumberOf(text.TakeDigits(limit)));
  }
  return FieldOfName(table, std::string(text.TakeName(limit)));
}

uint16_t FieldWidth(const DbFieldInfo& field) { return In16Bits(field.Size, 0); }
uint16_t FieldOffset(const DbFieldInfo& field) { return In16Bits(field.Offset, 65535); }

}  // namespace qrn
