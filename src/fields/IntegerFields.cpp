#include "fields/IntegerFields.h"

#include "fields/LittleEndian.h"
#include "fields/NumberText.h"
#include "fields/Sinks.h"

namespace qrn {
namespace {

void PutNumber(std::span<char> outText, std::integral auto number) {
  TextSink(outText).PutNumber(number);
}

void StoreNumber(const FieldTarget& field, size_t width) {
  char clean[kNumberTextSize];
  const std::string_view number = StripToNumber(field.settings, field.text, clean);
  if (width == 8) {
    StoreLittle(field.out, ParseInt64(number));
  } else {
    StoreLittle(field.out, ParseInt32(number), width);
  }
}

}  // namespace

void ReadInteger(const FieldSource& field, std::span<char> outText) {
  switch (field.size) {
    case 2:
      return PutNumber(outText, LoadLittle<int16_t>(field.value));
    case 4:
      return PutNumber(outText, LoadLittle<int32_t>(field.value));
    case 8:
      return PutNumber(outText, LoadLittle<int64_t>(field.value));
    default:
      return PutNumber(outText, unsigned{LoadLittle<uint8_t>(field.value)});
  }
}

void WriteInteger(const FieldTarget& field) {
  const bool ownWidth = field.size == 1 || field.size == 4 || field.size == 8;
  StoreNumber(field, ownWidth ? static_cast<size_t>(field.size) : 2);
}

void ReadUBin(const FieldSource& field, std::span<char> outText) {
  if (field.size == 4) return PutNumber(outText, LoadLittle<uint32_t>(field.value));
  PutNumber(outText, LoadLittle<uint16_t>(field.value));
}

void ReadAutoInc(const FieldSource& field, std::span<char> outText) {
  if (field.size == 4) return PutNumber(outText, LoadLittle<uint32_t>(field.value));
  PutNumber(outText, static_cast<uint32_t>(LoadLittle<int16_t>(field.value)));
}

void WriteAutoInc(const FieldTarget& field) { StoreNumber(field, field.size == 4 ? 4 : 2); }

}  // namespace qrn
