// Repair of what a user typed into the window of a Date or Time field, when leaving it. A beep is
// the only report.
#pragma once

#include <span>

#include "fields/QuorinSettings.h"
#include "platform/WindowText.h"

namespace qrn {

// Room that a repaired text needs at most, its NUL included.
inline constexpr size_t kRepairedTextSize = 48;

// The repaired date in the form of DateStyle. With a "/": year, month and, where a second "/"
// follows, day, else day 1. Without one, digits by position, the year two or four of them. Out of
// range beeps (48):
//   four-digit years   a year outside 1900 to 2099 becomes this year, a month outside 1 to 12 and
//                      a day outside 1 to 31 become 1, each for itself
//   two-digit years    a month above 12 or a day above 31 makes both 1; zero passes
// A part below zero is out of range as well. The length of the month is not considered.
void RepairDateText(const QuorinSettings& settings, const char* text, std::span<char> outText);

// "hh:mm:ss". With a ":": hours, minutes and, where a second ":" follows, seconds, else 0. Without
// one, two digits each by position. Hours up to 24, minutes and seconds up to 60 pass; otherwise
// all three become 0, with a beep (48).
void RepairTimeText(const char* text, std::span<char> outText);

// The same on a window's text, of which the first 15 bytes count. An empty text is left alone.
void NormaliseDateText(const QuorinSettings& settings, WindowHandle window);
void NormaliseTimeText(const QuorinSettings& settings, WindowHandle window);

}  // namespace qrn
