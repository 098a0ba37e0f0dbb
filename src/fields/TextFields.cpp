#include "fields/TextFields.h"

#include <algorithm>

#include "fields/Sinks.h"

namespace qrn {
namespace {

constexpr int kMaxCount = 255;
constexpr int kMaxSignedCount = 127;

std::string_view UpToNul(std::string_view text) { return text.substr(0, text.find('\0')); }

// Trailing blanks are taken off eight at a time first: a field is often mostly blanks.
std::string_view WithoutBlanks(std::string_view text) {
  constexpr std::string_view kEight = "        ";
  while (text.ends_with(kEight)) text.remove_suffix(kEight.size());
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

std::string_view AsText(std::span<const uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void CopyTo(std::span<char> outText, std::string_view text) { TextSink(outText).Put(text); }

uint8_t FirstByte(const FieldSource& field) { return field.value.empty() ? 0 : field.value[0]; }

char FirstCharacter(const FieldTarget& field) { return field.text.empty() ? '\0' : field.text[0]; }

// The text and zeros up to the field's end.
void PutZeroFilled(std::span<uint8_t> bytes, std::string_view text) {
  ByteSink sink(bytes);
  sink.Put(text);
  sink.Repeat('\0', bytes.size());
}

}  // namespace

void ReadString(const FieldSource& field, std::span<char> outText) {
  const std::string_view whole = field.Characters();
  std::string_view text = UpToNul(whole);
  if (text.size() == whole.size()) text = WithoutBlanks(text);
  CopyTo(outText, text);
}

void WriteString(const FieldTarget& field) {
  const std::span<uint8_t> bytes = field.Bytes();
  ByteSink sink(bytes);
  sink.Put(field.text);
  if (field.settings.fill_space != 0) {
    sink.Repeat(' ', bytes.size());
  } else {
    sink.Repeat('\0', 1);
  }
}

void ReadLString(const FieldSource& field, std::span<char> outText) {
  if (field.value.empty()) return CopyTo(outText, {});
  const int count = field.value[0];
  const size_t behind = (count > kMaxSignedCount ? field.Bytes() : field.value).size();
  const size_t limit = behind > 0 ? behind - 1 : 0;
  CopyTo(outText, AsText(field.value.subspan(1, std::min<size_t>(count, limit))));
}

void WriteLString(const FieldTarget& field) {
  const std::span<uint8_t> bytes = field.Bytes();
  if (bytes.empty()) return;
  const bool fits = field.text.size() < static_cast<size_t>(field.size);
  const size_t count = fits ? field.text.size() : static_cast<size_t>(field.size);
  bytes[0] = static_cast<uint8_t>(std::min<size_t>(count, kMaxCount));
  PutZeroFilled(bytes.subspan(1), field.text.substr(0, kMaxCount));
}

void ReadZString(const FieldSource& field, std::span<char> outText) {
  CopyTo(outText, UpToNul(AsText(field.value)));
}

void WriteZString(const FieldTarget& field) {
  const std::span<uint8_t> bytes = field.Bytes();
  if (bytes.empty()) return;
  PutZeroFilled(bytes, field.text.substr(0, bytes.size() - 1));
}

void ReadNote(const FieldSource& field, std::span<char> outText) {
  CopyTo(outText, UpToNul(field.Characters()));
}

void WriteNote(const FieldTarget& field) { PutZeroFilled(field.Bytes(), field.text); }

void ReadLogical(const FieldSource& field, std::span<char> outText) {
  TextSink(outText).Put(static_cast<char>(FirstByte(field) + '0'));
}

void WriteLogical(const FieldTarget& field) {
  ByteSink(field.out).Put(static_cast<char>(FirstCharacter(field) - '0'));
}

void ReadBit(const FieldSource& field, std::span<char> outText) {
  if (!outText.empty()) outText[0] = static_cast<char>(FirstByte(field));
}

void WriteBit(const FieldTarget& field) { ByteSink(field.out).Put(FirstCharacter(field)); }

}  // namespace qrn
