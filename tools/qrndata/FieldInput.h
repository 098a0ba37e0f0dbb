// What users write, checked before it goes into a field: the engine's own writing refuses nothing,
// so everything it would cut or misread is refused here.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/DbTypes.h"
#include "fields/QuorinSettings.h"

namespace qrndata {

// Settings as the site has them, but four-digit years: the text forms of files never vary.
qrn::QuorinSettings FileSettings();

struct CheckedText {
  std::string text;     // in the form that the engine stores exactly; code page 932
  std::string problem;  // UTF-8, what was expected; empty when the text is taken
};

// `text` is code page 932. An empty text is the field's empty value: zero, blank, no date.
//   numbers   12  -3.50  .5; Float and BFloat also 1.5e-7
//   Date      2024/01/05 or 2024-1-5, months to 12, days to 31
//   Time      9:30, 09:30:00 or 09:30:00.25
//   Logical   0, 1, true, false; another byte that stands there as its number
CheckedText CheckFieldText(const qrn::DbFieldInfo& field, std::string_view text);

// Stores a checked text. `out` runs from the field's first byte to the end of the record's buffer;
// display numbers put one byte behind the field, so fields go in by their order.
void PutFieldText(const qrn::QuorinSettings& settings, const qrn::DbFieldInfo& field,
                  const std::string& text, std::span<uint8_t> out);

}  // namespace qrndata
