// Visual Basic's own constants that script engines do not have.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace qrn::host {

// The constant's value, whatever the name's case; nothing for an unknown name. Key constants
// (vbKeyReturn, vbKeyA, vbKeyF5) are virtual key codes.
std::optional<int32_t> VbConstant(std::wstring_view name);

}  // namespace qrn::host
