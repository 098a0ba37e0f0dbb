#include "extended/ExRow.h"

#include <algorithm>

#include "extended/FieldReference.h"
#include "platform/CodePage.h"

namespace qrn {

std::string_view ExRow::Text(const DbTableInfo* table, std::span<const uint8_t> data) {
  length_ = 0;
  size_t offset = 0;
  for (const ExField& field : fields_) {
    if (&field != &fields_.front()) Append(delimiter_);
    ExFieldText(settings_, table, field.Info, data, offset, field_);
    Append(field_);
    offset += FieldWidth(field.Info);
  }
  return {line_, length_};
}

void ExRow::Append(std::string_view text) {
  const size_t size = CutAtCharacter(text, kLineLength - length_);
  std::copy_n(text.data(), size, line_ + length_);
  length_ += size;
}

}  // namespace qrn
