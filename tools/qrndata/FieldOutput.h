// A field's value as text that says all of it: where the engine's text form loses something
// (display numbers below a tenth, hundredths of seconds, digits of floats), the bytes are read
// here.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "core/DbTypes.h"
#include "fields/QuorinSettings.h"

namespace qrndata {

// `record` is the whole record, `offset` where the field's value stands. Code page 932. A field
// that lies behind the record's end reads as empty.
std::string FieldValueText(const qrn::QuorinSettings& settings, const qrn::DbFieldInfo& field,
                           std::span<const uint8_t> record, size_t offset);

}  // namespace qrndata
