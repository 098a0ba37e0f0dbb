#include "tools/qrndata/DateInput.h"

#include <charconv>

#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

// What forms let users store: no month's own length, months and days not given, midnight as the
// end of a day, a leap second.
constexpr int kLastMonth = 12, kLastDay = 31, kLastHour = 24, kLastMinute = 60;

// Takes a number of at most `longest` digits off the front; -1 when there is none.
int TakeNumber(std::string_view& text, size_t longest) {
  const size_t length = std::min(text.find_first_not_of("0123456789"), text.size());
  int number = -1;
  if (length == 0 || length > longest) return -1;
  std::from_chars(text.data(), text.data() + length, number);
  text.remove_prefix(length);
  return number;
}

bool TakeOneOf(std::string_view& text, std::string_view characters) {
  if (text.empty() || characters.find(text[0]) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::optional<std::string> NormalDate(std::string_view text) {
  if (text.empty() || text == "0000/00/00") return "";
  const int year = TakeNumber(text, 4);
  if (!TakeOneOf(text, "/-")) return std::nullopt;
  const int month = TakeNumber(text, 2);
  if (!TakeOneOf(text, "/-")) return std::nullopt;
  const int day = TakeNumber(text, 2);
  const bool isDate =
      text.empty() && year >= 0 && month >= 0 && month <= kLastMonth && day >= 0 && day <= kLastDay;
  if (!isDate) return std::nullopt;
  return Printed("%04d/%02d/%02d", year, month, day);
}

std::optional<std::string> NormalTime(std::string_view text) {
  if (text.empty()) return "";
  const int hours = TakeNumber(text, 2);
  if (!TakeOneOf(text, ":")) return std::nullopt;
  const int minutes = TakeNumber(text, 2);
  const int seconds = TakeOneOf(text, ":") ? TakeNumber(text, 2) : 0;
  const bool hasHundredths = TakeOneOf(text, ".");
  if (hasHundredths && text.size() != 2) return std::nullopt;
  const int hundredths = hasHundredths ? TakeNumber(text, 2) : 0;
  const bool isTime = text.empty() && hours >= 0 && hours <= kLastHour && minutes >= 0 &&
                      minutes <= kLastMinute && seconds >= 0 && seconds <= kLastMinute &&
                      hundredths >= 0;
  if (!isTime) return std::nullopt;
  const std::string normal = Printed("%02d:%02d:%02d", hours, minutes, seconds);
  return hundredths == 0 ? normal : normal + Printed(".%02d", hundredths);
}

int HundredthsOf(std::string_view normalTime) {
  constexpr size_t kWithoutHundredths = 8;
  int hundredths = 0;
  if (normalTime.size() > kWithoutHundredths) {
    std::from_chars(normalTime.data() + kWithoutHundredths + 1,
                    normalTime.data() + normalTime.size(), hundredths);
  }
  return hundredths;
}

}  // namespace qrndata
