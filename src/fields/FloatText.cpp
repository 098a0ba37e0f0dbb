#include "fields/FloatText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "fields/LittleEndian.h"
#include "fields/NumberText.h"
#include "fields/Sinks.h"

namespace qrn {
namespace {

constexpr int kMostZeros = 20;

// The digits of a number and where its point stands: 12.5 is "125" at 2, 0.00125 is "125" at -2.
class FixedDigits {
 public:
  FixedDigits(double value, int count) noexcept {
    const int precision = std::max(count, 1) - 1;
    const char* const end =
        std::to_chars(area_, area_ + sizeof area_, value, std::chars_format::scientific, precision)
            .ptr;
    // "d.ddde-xx" with the point moved out, or "de-xx".
    char* digits = area_;
    const char* exponent = area_ + 1;
    if (precision > 0) {
      area_[1] = area_[0];
      digits = area_ + 1;
      exponent = digits + precision + 1;
    }
    digits_ = {digits, static_cast<size_t>(count)};
    if (value == 0) return;
    const char* number = exponent + (exponent[1] == '+' ? 2 : 1);
    std::from_chars(number, end, point_);
    ++point_;
  }

  std::string_view Whole() const { return digits_.substr(0, Split()); }
  std::string_view Fraction() const { return digits_.substr(Split()); }
  int Point() const { return point_; }

 private:
  size_t Split() const {
    return point_ > 0 ? std::min(digits_.size(), static_cast<size_t>(point_)) : 0;
  }

  char area_[kMaxFloatDigits + 16];
  std::string_view digits_;
  int point_ = 0;
};

void PutDigits(TextSink& text, const FixedDigits& digits) {
  if (digits.Point() <= 0) {
    text.Put("0.");
    text.Repeat('0', static_cast<size_t>(std::min(-digits.Point(), kMostZeros)));
  } else {
    text.Put(digits.Whole());
    if (digits.Fraction().find_first_not_of('0') == std::string_view::npos) return;
    text.Put('.');
  }
  text.Put(digits.Fraction());
}

}  // namespace

void FloatToText(const QuorinSettings& settings, double value, std::span<char> outText) noexcept {
  TextSink text(outText);
  if (std::isnan(value)) return text.Put("nan");
  if (std::signbit(value)) text.Put('-');
  if (std::isinf(value)) return text.Put("inf");
  PutDigits(text,
            FixedDigits(std::fabs(value), std::clamp(settings.float_size, 0, kMaxFloatDigits)));
}

void ReadFloat(const FieldSource& field, std::span<char> outText) {
  const double value =
      field.size == 8 ? LoadLittle<double>(field.value) : LoadLittle<float>(field.value);
  FloatToText(field.settings, value, outText);
}

void WriteFloat(const FieldTarget& field) {
  char clean[kNumberTextSize];
  const double value = ParseDouble(StripToNumber(field.settings, field.text, clean));
  if (field.size == 4) return StoreLittle(field.out, static_cast<float>(value));
  StoreLittle(field.out, value);
}

}  // namespace qrn
