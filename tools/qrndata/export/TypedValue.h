// A field's value with a type, for files that have types.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "core/DbTypes.h"

namespace qrndata {

// As stored: forms let a user store a 31st of February.
struct DateValue {
  int year, month, day;
  bool IsInCalendar() const noexcept;
};

struct TimeValue {
  int hours, minutes, seconds, hundredths;
};

using NoValue = std::monostate;
using TypedValue = std::variant<NoValue, int64_t, double, bool, DateValue, TimeValue, std::string>;

// `text` is what FieldValueText says (UTF-8). Empty is no value but for texts. A decimal number
// whose digits a double does not hold (more than 15), and what is no value of the field's type,
// stays a text.
TypedValue TypedValueOf(const qrn::DbFieldInfo& field, const std::optional<std::string>& text);

// Digit places of a type of decimal digits, 0 of every other type.
int32_t DecimalPlaces(const qrn::DbFieldInfo& field) noexcept;

// Digits that every double of so many decimal ones tells apart.
inline constexpr int32_t kDigitsOfDouble = 15;

}  // namespace qrndata
