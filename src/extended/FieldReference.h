// How conditions and field lists name a field: by its number, counted from 0, or by its exact name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/DbTypes.h"
#include "extended/TextCursor.h"

namespace qrn {

inline constexpr int32_t kNoSuchField = -1;

// Reads one reference of at most `limit` bytes: digits are a number, anything else a name, which
// goes up to a blank or a comma. Gives the position in `Fields`; kNoSuchField after VE818 (the name
// is unknown) or VE025 (the number is too large).
[[nodiscard]] int32_t TakeFieldReference(const DbTableInfo& table, TextCursor& text, size_t limit);

// What TakeFieldReference would show.
struct FieldFault {
  int message = 0;   // a MessageId
  std::string name;  // the one that is unknown, with VE818
};

// As TakeFieldReference, but nothing is shown.
[[nodiscard]] int32_t ReadFieldReference(const DbTableInfo& table, TextCursor& text, size_t limit,
                                         FieldFault& fault);

// Bytes that an extended operation moves for a field: `Size`, as far as 16 bits carry it. A
// damaged dictionary's negative size counts as 0.
uint16_t FieldWidth(const DbFieldInfo& field);

// `Offset`, as far as 16 bits carry it; one that they do not carry lies past every record.
uint16_t FieldOffset(const DbFieldInfo& field);

}  // namespace qrn
