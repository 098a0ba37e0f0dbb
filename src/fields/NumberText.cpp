#include "fields/NumberText.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "fields/Digits.h"
#include "fields/Sinks.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

bool IsBlank(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

}  // namespace

std::string_view StripToNumber(const QuorinSettings&, std::string_view text,
                               std::span<char> out) noexcept {
  size_t length = 0;
  {
    TextSink clean(out);
    for (size_t i = 0; i < text.size() && length + 1 < out.size(); ++i) {
      if (IsLeadByte(static_cast<uint8_t>(text[i]))) {
        ++i;
      } else if (IsDigit(text[i]) || text[i] == '-' || text[i] == '.') {
        clean.Put(text[i]);
        ++length;
      }
    }
  }
  return {out.data(), length};
}

void IntegerParser::Take(char character) noexcept {
  if (state_ == State::kDone) return;
  if (IsDigit(character)) {
    TakeDigit(static_cast<unsigned>(character - '0'));
  } else if (state_ == State::kBlanks && (character == '-' || character == '+')) {
    negative_ = character == '-';
    state_ = State::kDigits;
  } else if (state_ == State::kDigits || !IsBlank(character)) {
    state_ = State::kDone;
  }
}

void IntegerParser::TakeDigit(unsigned digit) noexcept {
  state_ = State::kDigits;
  const uint64_t limit =
      static_cast<uint64_t>(std::numeric_limits<int64_t>::max()) + (negative_ ? 1 : 0);
  magnitude_ = magnitude_ > (limit - digit) / 10 ? limit : magnitude_ * 10 + digit;
}

int64_t IntegerParser::Value() const noexcept {
  return static_cast<int64_t>(negative_ ? 0 - magnitude_ : magnitude_);
}

int64_t ParseInt64(std::string_view text) noexcept {
  IntegerParser parser;
  parser.Take(text);
  return parser.Value();
}

int32_t ParseInt32(std::string_view text) noexcept {
  using Limits = std::numeric_limits<int32_t>;
  return static_cast<int32_t>(std::clamp<int64_t>(ParseInt64(text), Limits::min(), Limits::max()));
}

int32_t ParseInt32At(std::string_view text, size_t position, size_t length) noexcept {
  return position < text.size() ? ParseInt32(text.substr(position, length)) : 0;
}

double ParseDouble(std::string_view text) noexcept {
  double number = 0;
  const auto result =
      std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  if (result.ec == std::errc{}) return number;
  if (result.ec != std::errc::result_out_of_range) return 0;
  // Out of range either way: large with a digit other than 0 in front of the point, else tiny.
  const bool large = text.substr(0, text.find('.')).find_first_of("123456789") != text.npos;
  const double limit = large ? std::numeric_limits<double>::infinity() : 0.0;
  return text.starts_with('-') ? -limit : limit;
}

}  // namespace qrn
