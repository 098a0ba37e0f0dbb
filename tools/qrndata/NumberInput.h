// Checks of the number types, by which FieldInput.cpp dispatches.
#pragma once

#include <string_view>

#include "tools/qrndata/FieldInput.h"

namespace qrndata {

CheckedText CheckWhole(const qrn::DbFieldInfo& field, std::string_view text);
CheckedText CheckReal(const qrn::DbFieldInfo& field, std::string_view text);
CheckedText CheckDigits(const qrn::DbFieldInfo& field, std::string_view text);

// Whole numbers are stored to their full range; the engine's writing stays at 32 signed bits.
void PutWhole(const std::string& text, int32_t size, std::span<uint8_t> out);

}  // namespace qrndata
