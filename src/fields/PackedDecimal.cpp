#include "fields/PackedDecimal.h"

#include <algorithm>

#include "fields/NumberText.h"
#include "fields/Sinks.h"

namespace qrn {
namespace {

constexpr uint8_t kNegative = 13;

// The digits of a field as characters, from the left.
class PackedDigits {
 public:
  explicit PackedDigits(std::span<const uint8_t> bytes) : bytes_(bytes) {}

  size_t Count() const { return bytes_.empty() ? 0 : 2 * bytes_.size() - 1; }
  char At(size_t index) const {
    const uint8_t pair = bytes_[index / 2];
    return static_cast<char>('0' + (index % 2 == 0 ? pair >> 4 : pair & 15));
  }
  bool IsNegative() const { return !bytes_.empty() && (bytes_.back() & 15) == kNegative; }
  // The first position from `first` up to `end` that does not hold 0.
  size_t SkipZeros(size_t first, size_t end) const {
    while (first < end) {
      const bool twoAtOnce = first % 2 == 0 && bytes_[first / 2] == 0;
      if (!twoAtOnce && At(first) != '0') break;
      first += twoAtOnce ? 2 : 1;
    }
    return std::min(first, end);
  }

 private:
  std::span<const uint8_t> bytes_;
};

// As many digits from `first` on as there are places.
void FillDigits(std::span<char> places, const PackedDigits& digits, size_t first) {
  size_t at = 0;
  if (first % 2 != 0 && !places.empty()) places[at++] = digits.At(first++);
  for (; at + 2 <= places.size(); at += 2, first += 2) {
    places[at] = digits.At(first);
    places[at + 1] = digits.At(first + 1);
  }
  if (at < places.size()) places[at] = digits.At(first);
}

// What TextToDecimal stores: two runs of digits, zeros behind them, and how many digits further
// left than the last place they end.
struct PlacedDigits {
  std::string_view whole;
  std::string_view fraction;
  size_t zeros = 0;
  size_t shift = 0;

  size_t Length() const { return whole.size() + fraction.size() + zeros; }
};

PlacedDigits PlaceDigits(std::string_view text, size_t decimals) {
  const size_t point = decimals != 0 ? text.find('.') : text.npos;
  if (point == text.npos) return {text, {}, 0, decimals};
  const std::string_view fraction = text.substr(point + 1, decimals);
  return {text.substr(0, point), fraction, decimals - fraction.size(), 0};
}

// Writes digits leftwards, beginning `skipped` digits left of the last place. What would stand
// outside the field is dropped.
class NibbleWriter {
 public:
  NibbleWriter(std::span<uint8_t> bytes, size_t size, size_t skipped)
      : bytes_(bytes), size_(size), nibble_(1 + skipped) {}  // nibble 0 is the sign

  void PutFromTheRight(std::string_view digits) {
    for (size_t i = digits.size(); i-- > 0;) Put(digits[i]);
  }

 private:
  void Put(char character) {
    const size_t fromRight = nibble_ / 2 + 1;
    const bool high = nibble_++ % 2 != 0;
    if (fromRight > size_ || size_ - fromRight >= bytes_.size()) return;
    const int digit = character >= '0' && character <= '9' ? character - '0' : 0;
    bytes_[size_ - fromRight] |= static_cast<uint8_t>(high ? digit << 4 : digit);
  }

  std::span<uint8_t> bytes_;
  size_t size_;
  size_t nibble_;
};

}  // namespace

void DecimalToText(const QuorinSettings&, std::span<const uint8_t> fieldBytes,
                   std::span<char> outText, int decimals) noexcept {
  const PackedDigits digits(fieldBytes);
  const size_t count = digits.Count();
  const size_t places = static_cast<size_t>(std::max(decimals, 0));
  const size_t point = count > places ? count - places : 0;
  const size_t first = digits.SkipZeros(0, point);
  TextSink text(outText);
  if (digits.IsNegative()) text.Put('-');
  if (first == point) {
    // Nothing in front of the point: the fraction stays even where it is all zeros.
    text.Put('0');
    if (places == 0) return;
    text.Put('.');
    text.Repeat('0', places - (count - point));
    return FillDigits(text.Take(count - point), digits, point);
  }
  FillDigits(text.Take(point - first), digits, first);
  if (digits.SkipZeros(point, count) == count) return;
  text.Put('.');
  FillDigits(text.Take(count - point), digits, point);
}

void TextToDecimal(const QuorinSettings& settings, std::string_view cleanText,
                   std::span<uint8_t> outBytes, int size, int decimals) noexcept {
  if (size <= 0) return;
  const auto width = static_cast<size_t>(size);
  const std::span<uint8_t> bytes = outBytes.first(std::min(outBytes.size(), width));
  const bool negative = cleanText.starts_with('-');
  if (negative) cleanText.remove_prefix(1);
  std::fill(bytes.begin(), bytes.end(), uint8_t{0});
  if (bytes.size() == width) {
    bytes.back() = negative ? kNegative : static_cast<uint8_t>(settings.sign_nibble & 15);
  }
  const PlacedDigits digits = PlaceDigits(cleanText, static_cast<size_t>(std::max(decimals, 0)));
  if (digits.Length() > 2 * width - 1) return;
  NibbleWriter writer(bytes, width, digits.shift + digits.zeros);
  writer.PutFromTheRight(digits.fraction);
  writer.PutFromTheRight(digits.whole);
}

void ReadDecimal(const FieldSource& field, std::span<char> outText) {
  DecimalToText(field.settings, field.Bytes(), outText, field.decimals);
}

void WriteDecimal(const FieldTarget& field) {
  char clean[kNumberTextSize];
  TextToDecimal(field.settings, StripToNumber(field.settings, field.text, clean), field.out,
                field.size, field.decimals);
}

}  // namespace qrn
