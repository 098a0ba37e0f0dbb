#include "fields/SignedNumeric.h"

#include <algorithm>

#include "fields/Digits.h"
#include "fields/PointedDigits.h"
#include "fields/Sinks.h"

namespace qrn {
namespace {

constexpr int kNegativeDigitStep = 64;  // from "0" to "p"
constexpr size_t kMaxDecimalsAnywhere = 63;

bool IsLetter(char character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

std::string_view WithoutLeadingZeros(std::string_view characters) {
  return characters.substr(std::min(characters.find_first_not_of('0'), characters.size()));
}

bool IsEmpty(std::string_view characters) {
  return characters.empty() || characters.front() == '\0';
}

size_t UsableDecimals(const FieldTarget& field, int signWidth) {
  const auto decimals = static_cast<size_t>(field.decimals);
  if (decimals <= kMaxDecimalsAnywhere) return decimals;
  return std::min(decimals, static_cast<size_t>(std::max(field.size - signWidth, 0)));
}

// Puts up to `count` digits of `text`, whatever stands between them; the number put.
size_t PutDigitsOf(ByteSink& sink, std::string_view text, size_t count) {
  size_t done = 0;
  for (size_t i = 0; i < text.size() && done < count; ++i) {
    if (!IsDigit(text[i])) continue;
    sink.Put(text[i]);
    ++done;
  }
  return done;
}

// Integer part and fraction, both filled up with zeros; `signWidth` is what the field keeps free
// behind them.
void PutUnsigned(ByteSink& sink, const FieldTarget& field, std::string_view number, int signWidth) {
  const size_t decimals = UsableDecimals(field, signWidth);
  const auto digits = static_cast<size_t>(std::max(field.size - signWidth, 0));
  const size_t width = digits > decimals ? digits - decimals : 0;
  const std::string_view whole = LeadingDigits(number.substr(0, width));
  sink.Repeat('0', width - whole.size());
  sink.Put(whole);
  sink.Repeat('0', decimals - PutDigitsOf(sink, number.substr(whole.size()), decimals));
}

}  // namespace

void ReadNumericSTS(const FieldSource& field, std::span<char> outText) {
  const std::string_view characters = field.Characters();
  TextSink text(outText);
  if (IsEmpty(characters)) return text.Put('0');
  if (characters.back() == '-') text.Put('-');
  const std::string_view digits = LeadingDigits(WithoutLeadingZeros(characters));
  PutPointedDigits(text, {digits.empty() ? "0" : digits, {}}, static_cast<size_t>(field.decimals));
}

void ReadNumericSA(const FieldSource& field, std::span<char> outText) {
  const std::string_view characters = field.Characters();
  TextSink text(outText);
  if (IsEmpty(characters)) return text.Put('0');
  if (IsLetter(characters.back())) text.Put('-');
  const std::string_view rest = WithoutLeadingZeros(characters);
  const std::string_view body = LeadingDigits(rest);
  const bool decoded = body.size() < rest.size();
  const char last = decoded ? static_cast<char>(rest[body.size()] - kNegativeDigitStep) : '0';
  const DigitRun digits{body, {&last, decoded || rest.empty() ? size_t{1} : size_t{0}}};
  PutPointedDigits(text, digits, static_cast<size_t>(field.decimals));
}

void WriteNumericSTS(const FieldTarget& field) {
  if (field.size <= 0) return;
  const bool negative = field.text.starts_with('-');
  ByteSink sink(field.out);
  PutUnsigned(sink, field, field.text.substr(negative ? 1 : 0), 1);
  sink.Put(negative ? '-' : '+');
  sink.Put('\0');
}

void WriteNumericSA(const FieldTarget& field) {
  if (field.size <= 0) return;
  const bool negative = field.text.starts_with('-');
  ByteSink sink(field.out);
  PutUnsigned(sink, field, field.text.substr(negative ? 1 : 0), 0);
  sink.Put('\0');
  const auto size = static_cast<size_t>(field.size);
  if (negative && size <= field.out.size()) field.out[size - 1] += kNegativeDigitStep;
}

}  // namespace qrn
