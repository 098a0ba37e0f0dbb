#include "fields/DateRepair.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "fields/NumberText.h"
#include "fields/Sinks.h"
#include "platform/LocalDate.h"
#include "platform/MessageBox.h"

namespace qrn {
namespace {

constexpr size_t kWindowTextSize = 16;

using Parts = std::array<int, 3>;

// Year, month and day, or hours, minutes and seconds.
Parts SplitParts(std::string_view text, char separator, size_t firstWidth, int missingThird) {
  const size_t first = text.find(separator);
  if (first == text.npos) {
    return {ParseInt32At(text, 0, firstWidth), ParseInt32At(text, firstWidth, 2),
            ParseInt32At(text, firstWidth + 2, 2)};
  }
  const size_t second = text.find(separator, first + 1);
  const int third = second != text.npos ? ParseInt32(text.substr(second + 1)) : missingThird;
  return {ParseInt32(text.substr(0, first)), ParseInt32(text.substr(first + 1)), third};
}

bool IsWithin(int value, int low, int high) { return value >= low && value <= high; }

// Replaces a value outside its range, with a beep.
void Hold(int& value, int low, int high, int replacement) {
  if (IsWithin(value, low, high)) return;
  SoundBeep(kBeepWarning);
  value = replacement;
}

void RepairFourDigits(Parts& date) {
  Hold(date[0], 1900, 2099, LocalDate().year);
  Hold(date[1], 1, 12, 1);
  Hold(date[2], 1, 31, 1);
}

void RepairTwoDigits(Parts& date) {
  if (IsWithin(date[1], 0, 12) && IsWithin(date[2], 0, 31)) return;
  SoundBeep(kBeepWarning);
  date[1] = date[2] = 1;
}

void PutParts(std::span<char> outText, const Parts& parts, int firstWidth, char separator) {
  TextSink text(outText);
  text.PutPadded(parts[0], firstWidth);
  text.Put(separator);
  text.PutPadded(parts[1], 2);
  text.Put(separator);
  text.PutPadded(parts[2], 2);
}

// Reads the window, lets `repair` write the new text and puts it back.
template <class Repair>
void RepairWindow(WindowHandle window, Repair repair) {
  char text[kWindowTextSize];
  if (ReadWindowText(window, text) == 0) return;
  char repaired[kRepairedTextSize];
  repair(text, std::span<char>(repaired));
  WriteWindowText(window, repaired);
}

}  // namespace

void RepairDateText(const QuorinSettings& settings, const char* text, std::span<char> outText) {
  const bool twoDigits = settings.DateStyle == kTwoDigitYears;
  const int width = twoDigits ? 2 : 4;
  Parts date = SplitParts(text, '/', static_cast<size_t>(width), 1);
  twoDigits ? RepairTwoDigits(date) : RepairFourDigits(date);
  PutParts(outText, date, width, '/');
}

void RepairTimeText(const char* text, std::span<char> outText) {
  Parts time = SplitParts(text, ':', 2, 0);
  if (!IsWithin(time[0], 0, 24) || !IsWithin(time[1], 0, 60) || !IsWithin(time[2], 0, 60)) {
    SoundBeep(kBeepWarning);
    time = {};
  }
  PutParts(outText, time, 2, ':');
}

void NormaliseDateText(const QuorinSettings& settings, WindowHandle window) {
  RepairWindow(window, [&](const char* text, std::span<char> outText) {
    RepairDateText(settings, text, outText);
  });
}

void NormaliseTimeText(const QuorinSettings&, WindowHandle window) {
  RepairWindow(window, RepairTimeText);
}

}  // namespace qrn
