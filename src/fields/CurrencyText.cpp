#include "fields/CurrencyText.h"

#include <algorithm>

#include "fields/Digits.h"
#include "fields/LittleEndian.h"
#include "fields/NumberText.h"
#include "fields/Sinks.h"

namespace qrn {
namespace {

// Takes what belongs to a number; how many characters that were.
size_t TakeNumber(IntegerParser& parser, std::string_view text) {
  size_t count = 0;
  for (const char character : text) {
    if (!IsDigit(character) && character != '-') continue;
    parser.Take(character);
    ++count;
  }
  return count;
}

// Behind the last point.
std::string_view FractionOf(std::string_view text) {
  const size_t point = text.rfind('.');
  return point == text.npos ? std::string_view{} : text.substr(point + 1);
}

}  // namespace

void ReadCurrency(const FieldSource& field, std::span<char> outText) {
  const auto number = LoadLittle<int64_t>(field.value);
  const auto magnitude =
      number < 0 ? 0 - static_cast<uint64_t>(number) : static_cast<uint64_t>(number);
  char area[24];
  const std::string_view digits(area, std::to_chars(area, area + sizeof area, magnitude).ptr);
  const auto decimals = static_cast<size_t>(field.decimals);
  const size_t point = digits.size() > decimals ? digits.size() - decimals : 0;
  TextSink text(outText);
  if (number < 0) text.Put('-');
  text.Put(point != 0 ? digits.substr(0, point) : "0");
  text.Put('.');
  text.Repeat('0', decimals - (digits.size() - point));
  text.Put(digits.substr(point));
}

void WriteCurrency(const FieldTarget& field) {
  IntegerParser parser;
  TakeNumber(parser, field.text.substr(0, field.text.find('.')));
  const auto decimals = static_cast<size_t>(field.decimals);
  for (size_t i = TakeNumber(parser, FractionOf(field.text)); i < decimals; ++i) parser.Take('0');
  StoreLittle(field.out, parser.Value());
}

}  // namespace qrn
