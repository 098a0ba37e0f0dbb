// Dates and times as users write them, brought to the one form that fields are written from.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qrndata {

// "2024/01/05" from that, "2024-01-05" or "2024/1/5"; "" from "" and "0000/00/00". Takes what forms
// store: months to 12 and days to 31, zeros included, whatever the month's length. Nothing else.
std::optional<std::string> NormalDate(std::string_view text);

// "09:30:00" from "9:30" or "9:30:00"; "09:30:00.25" keeps its hundredths unless they are zero.
// Takes what forms store: hours to 24, minutes and seconds to 60.
std::optional<std::string> NormalTime(std::string_view text);

// The hundredths that a normal time carries, 0 without.
int HundredthsOf(std::string_view normalTime);

}  // namespace qrndata
