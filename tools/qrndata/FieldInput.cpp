#include "tools/qrndata/FieldInput.h"

#include <algorithm>
#include <charconv>

#include "fields/FieldText.h"
#include "tools/qrndata/DateInput.h"
#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/NumberInput.h"

namespace qrndata {

namespace {

// Bytes that the text itself may have: some types keep one for a length or a NUL.
size_t TextRoom(const qrn::DbFieldInfo& field) {
  constexpr size_t kLengthByteLimit = 127;
  const auto size = static_cast<size_t>(std::max(field.Size, 0));
  if (field.Type == qrn::kString) return size;
  const size_t room = size == 0 ? 0 : size - 1;
  return field.Type == qrn::kLString ? std::min(room, kLengthByteLimit) : room;
}

CheckedText CheckText(const qrn::DbFieldInfo& field, std::string_view text) {
  if (text.size() <= TextRoom(field)) return {std::string(text), {}};
  return {{}, Say(Message::TextTooLong, text.size(), TextRoom(field))};
}

CheckedText CheckLogical(std::string_view text) {
  if (text.empty() || text == "0" || text == "false") return {"0", {}};
  if (text == "1" || text == "true") return {"1", {}};
  uint8_t byte = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), byte);
  if (error != std::errc{} || end != text.data() + text.size()) {
    return {{}, Say(Message::LogicalExpected)};
  }
  return {std::string(1, static_cast<char>(byte + '0')), {}};
}

CheckedText CheckBit(std::string_view text) {
  if (text.size() <= 1) return {std::string(text), {}};
  return {{}, Say(Message::CharacterExpected)};
}

CheckedText Checked(std::optional<std::string> normal, Message expected) {
  if (normal) return {*std::move(normal), {}};
  return {{}, Say(expected)};
}

}  // namespace

qrn::QuorinSettings FileSettings() {
  qrn::QuorinSettings settings;
  settings.Load();
  const qrn::QuorinSettings standard;
  settings.DateStyle = standard.DateStyle;
  std::copy(std::begin(standard.DateFormat), std::end(standard.DateFormat), settings.DateFormat);
  return settings;
}

CheckedText CheckFieldText(const qrn::DbFieldInfo& field, std::string_view text) {
  const FieldTypeRow* type = FindFieldType(field.Type);
  if (type == nullptr) return {{}, Say(Message::TypeNotWritten, FieldTypeName(field.Type))};
  if (text.find('\0') != std::string_view::npos) return {{}, Say(Message::HoldsNul)};
  switch (type->family) {
    case Family::Text:
      return CheckText(field, text);
    case Family::Whole:
      return CheckWhole(field, text);
    case Family::Real:
      return CheckReal(field, text);
    case Family::Digits:
      return CheckDigits(field, text);
    case Family::Date:
      return Checked(NormalDate(text), Message::DateExpected);
    case Family::Time:
      return Checked(NormalTime(text), Message::TimeExpected);
    case Family::Logical:
      return CheckLogical(text);
    case Family::Bit:
      return CheckBit(text);
    case Family::Blob:
      return {std::string(text), {}};
  }
  return {};
}

void PutFieldText(const qrn::QuorinSettings& settings, const qrn::DbFieldInfo& field,
                  const std::string& text, std::span<uint8_t> out) {
  const FieldTypeRow* type = FindFieldType(field.Type);
  if (type != nullptr && type->family == Family::Whole) {
    PutWhole(text, field.Size, out);
    return;
  }
  const bool isTime = type != nullptr && type->family == Family::Time;
  constexpr size_t kTimeLength = 8;
  qrn::SetFieldText(settings, out, (isTime ? text.substr(0, kTimeLength) : text).c_str(), field);
  if (isTime && !out.empty()) out[0] = static_cast<uint8_t>(HundredthsOf(text));
}

}  // namespace qrndata
