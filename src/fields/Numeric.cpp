#include "fields/Numeric.h"

#include <algorithm>
#include <optional>

#include "fields/Digits.h"
#include "fields/PointedDigits.h"
#include "fields/Sinks.h"

namespace qrn {
namespace {

constexpr int kPositiveStep = 16;  // from "1" to "A"
constexpr int kNegativeStep = 25;  // from "1" to "J"

struct LastDigit {
  bool negative;
  char digit;
};

// What is neither a digit nor one of the signs comes out as it falls.
LastDigit DecodeOverpunch(uint8_t code) {
  if (code == '{') return {false, '0'};
  if (code == '}') return {true, '0'};
  if (code >= 'J') return {true, static_cast<char>(code - kNegativeStep)};
  return {false, static_cast<char>(code >= 'A' ? code - kPositiveStep : code)};
}

uint8_t EncodeOverpunch(uint8_t digit, bool negative) {
  if (digit == '0') return negative ? '}' : '{';
  return static_cast<uint8_t>(digit + (negative ? kNegativeStep : kPositiveStep));
}

// The characters of a typed number that count: digits and points.
class NumericScan {
 public:
  NumericScan(std::string_view text, size_t maxDigits) : rest_(text), digitsLeft_(maxDigits) {}

  // The next one, nothing at the end.
  std::optional<char> Next() {
    while (!rest_.empty() && digitsLeft_ != 0) {
      const char character = rest_.front();
      rest_.remove_prefix(1);
      if (IsDigit(character)) --digitsLeft_;
      if (IsDigit(character) || character == '.') return character;
      if (character != '+' && character != ',' && character != ' ') rest_ = {};
    }
    return std::nullopt;
  }

  // Steps behind the next point; the number of characters in front of it.
  size_t SkipWhole() {
    size_t count = 0;
    for (auto next = Next(); next && *next != '.'; next = Next()) ++count;
    return count;
  }

  // Puts up to `count` digits, stepping over points; the number of those that were there.
  size_t Put(ByteSink& sink, size_t count) {
    size_t done = 0;
    while (done < count) {
      const auto next = Next();
      if (!next) break;
      if (*next == '.') continue;
      sink.Put(*next);
      ++done;
    }
    return done;
  }

 private:
  std::string_view rest_;
  size_t digitsLeft_;
};

// The digits as stored, with zeros in front and behind.
void PutNumeric(ByteSink& sink, NumericScan number, size_t size, size_t decimals) {
  NumericScan fraction = number;
  const size_t whole = fraction.SkipWhole();
  if (size > whole + decimals) sink.Repeat('0', size - whole - decimals);
  number.Put(sink, whole);
  sink.Repeat('0', decimals - fraction.Put(sink, decimals));
}

void CutAtNul(DigitRun& digits) {
  if (const size_t nul = digits.body.find('\0'); nul != digits.body.npos) {
    digits = {digits.body.substr(0, nul), {}};
  } else if (digits.last.starts_with('\0')) {
    digits.last = {};
  }
}

void SkipZeros(DigitRun& digits, size_t atMost) {
  for (; atMost != 0 && digits.body.starts_with('0'); --atMost) digits.body.remove_prefix(1);
  if (atMost != 0 && digits.body.empty() && digits.last == "0") digits.last = {};
}

}  // namespace

void ReadNumeric(const FieldSource& field, std::span<char> outText) {
  const std::string_view characters = field.Characters();
  TextSink text(outText);
  if (characters.empty() || characters.front() == '\0') return text.Put('0');
  const LastDigit last = DecodeOverpunch(static_cast<uint8_t>(characters.back()));
  if (last.negative) text.Put('-');
  const auto decimals = static_cast<size_t>(field.decimals);
  DigitRun digits{characters.substr(0, characters.size() - 1), {&last.digit, 1}};
  CutAtNul(digits);
  SkipZeros(digits, characters.size() > decimals ? characters.size() - decimals : 0);
  if (digits.Length() == 0 && decimals == 0) return text.Put('0');
  PutPointedDigits(text, digits, digits.Length() < decimals ? 0 : decimals);
}

void WriteNumeric(const FieldTarget& field) {
  if (field.size <= 0) return;
  const auto size = static_cast<size_t>(field.size);
  const bool negative = field.text.starts_with('-');
  ByteSink sink(field.out);
  PutNumeric(sink, NumericScan(field.text.substr(negative ? 1 : 0), size), size,
             static_cast<size_t>(field.decimals));
  if (size <= field.out.size())
    field.out[size - 1] = EncodeOverpunch(field.out[size - 1], negative);
}

}  // namespace qrn
