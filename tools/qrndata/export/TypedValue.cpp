#include "tools/qrndata/export/TypedValue.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <string_view>

#include "fields/Digits.h"
#include "tools/qrndata/FieldTypes.h"

namespace qrndata {

namespace {

template <class Number>
std::optional<Number> Parse(std::string_view text) {
  Number number{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return number;
}

// "inf" and its like are no numbers to any file.
bool IsPlainNumber(std::string_view text) {
  return !text.empty() && qrn::IsDigit(text.back()) &&
         std::ranges::all_of(text, [](char c) { return qrn::IsDigit(c) || c == '-' || c == '.'; });
}

int DigitsOf(std::string_view text) {
  const size_t first = std::min(text.find_first_of("123456789"), text.size());
  return static_cast<int>(std::ranges::count_if(text.substr(first), &qrn::IsDigit));
}

// The number without decimals that are all zeros.
std::string_view WholePart(std::string_view text) {
  const size_t point = std::min(text.find('.'), text.size());
  return text.find_first_not_of('0', point + 1) == text.npos ? text.substr(0, point) : text;
}

TypedValue NumberOf(const std::string& text, bool isBinary) {
  if (!IsPlainNumber(text)) return text;
  if (const auto whole = Parse<int64_t>(WholePart(text))) return *whole;
  const auto real = Parse<double>(text);
  const bool isExact = isBinary || DigitsOf(text) <= kDigitsOfDouble;
  if (real && isExact) return *real;
  return text;
}

// Numbers of two digits, the first one of four in a date, with `between` between them.
template <size_t Count>
bool TakeParts(std::string_view text, char between, int (&parts)[Count]) {
  for (size_t at = 0; at < Count; ++at) {
    const size_t end = at + 1 < Count ? text.find(between) : text.size();
    if (end == text.npos || end == 0) return false;
    const auto part = Parse<int>(text.substr(0, end));
    if (!part) return false;
    parts[at] = *part;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return true;
}

TypedValue DateOf(const std::string& text) {
  int parts[3] = {};
  if (!TakeParts(text, '/', parts)) return text;
  return DateValue{parts[0], parts[1], parts[2]};
}

TypedValue TimeOf(const std::string& text) {
  const size_t point = std::min(text.find('.'), text.size());
  int parts[3] = {};
  if (!TakeParts(std::string_view(text).substr(0, point), ':', parts)) return text;
  TimeValue time{parts[0], parts[1], parts[2], 0};
  if (point == text.size()) return time;
  const auto hundredths = Parse<int>(std::string_view(text).substr(point + 1));
  if (!hundredths) return text;
  time.hundredths = *hundredths;
  return time;
}

TypedValue TruthOf(const std::string& text) {
  if (text == "0" || text == "1") return text == "1";
  return NumberOf(text, true);
}

}  // namespace

bool DateValue::IsInCalendar() const noexcept {
  using namespace std::chrono;
  return year_month_day(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                        std::chrono::day(static_cast<unsigned>(day)))
      .ok();
}

TypedValue TypedValueOf(const qrn::DbFieldInfo& field, const std::optional<std::string>& text) {
  if (!text) return NoValue();
  const FieldTypeRow* type = FindFieldType(field.Type);
  const Family family = type == nullptr ? Family::Text : type->family;
  const bool isText = family == Family::Text || family == Family::Bit || family == Family::Blob;
  if (isText) return *text;
  if (text->empty()) return NoValue();
  switch (family) {
    case Family::Date:
      return DateOf(*text);
    case Family::Time:
      return TimeOf(*text);
    case Family::Logical:
      return TruthOf(*text);
    default:
      return NumberOf(*text, family != Family::Digits);
  }
}

int32_t DecimalPlaces(const qrn::DbFieldInfo& field) noexcept {
  const FieldTypeRow* type = FindFieldType(field.Type);
  if (type == nullptr || type->family != Family::Digits) return 0;
  return type->MaxDecimals(field.Size);
}

}  // namespace qrndata
