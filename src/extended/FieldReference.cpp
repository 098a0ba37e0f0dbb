#include "extended/FieldReference.h"

#include <algorithm>
#include <string>

#include "core/DictionaryLookup.h"
#include "fields/Messages.h"

namespace qrn {
namespace {

uint16_t In16Bits(int32_t value, int32_t ifNegative) {
  constexpr int32_t kLargest = 65535;
  return static_cast<uint16_t>(value < 0 ? ifNegative : std::min(value, kLargest));
}

}  // namespace

int32_t ReadFieldReference(const DbTableInfo& table, TextCursor& text, size_t limit,
                           FieldFault& fault) {
  if (text.Peek() >= '0' && text.Peek() <= '9') {
    const int32_t number = NumberOf(text.TakeDigits(limit));
    if (number < table.FieldCount) return number;
    fault.message = kVE025;
    return kNoSuchField;
  }
  fault.name = text.TakeName(limit);
  const int32_t position = DbFindField(table, fault.name.c_str());
  if (position >= 0) return position;
  fault.message = kVE818;
  return kNoSuchField;
}

int32_t TakeFieldReference(const DbTableInfo& table, TextCursor& text, size_t limit) {
  FieldFault fault;
  const int32_t position = ReadFieldReference(table, text, limit, fault);
  if (position == kNoSuchField) ShowMessage(fault.message, fault.name.c_str());
  return position;
}

uint16_t FieldWidth(const DbFieldInfo& field) { return In16Bits(field.Size, 0); }
uint16_t FieldOffset(const DbFieldInfo& field) { return In16Bits(field.Offset, 65535); }

}  // namespace qrn
