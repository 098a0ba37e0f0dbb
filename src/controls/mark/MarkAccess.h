// The properties that check boxes and option buttons have under the same ids.
#pragma once

#include "controls/mark/MarkControl.h"

namespace qrn {

// clang-format off
inline constexpr ole::PropertyEntry kMarkAccess[] = {
    {4, ole::Field<&MarkControl::DbValueTrue>},
    {5, ole::Field<&MarkControl::DbValueFalse>},
    {6, ole::Field<&MarkControl::Value>},
    {7, ole::Field<&MarkControl::Alignment>},
};
// clang-format on

}  // namespace qrn
