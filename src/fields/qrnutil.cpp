// The door of the field codecs: dispatch by type, and the walk over a record's fields.
#include <algorithm>
#include <cstring>
#include <functional>

#include "fields/FieldCodecs.h"
#include "fields/FieldText.h"
#include "fields/Messages.h"

namespace qrn {
namespace {

// From `bytes` to the end of `record`, nothing when it does not point inside.
std::span<const uint8_t> RestOf(std::span<const uint8_t> record, const uint8_t* bytes) {
  const std::less<const uint8_t*> before;
  const uint8_t* const end = record.data() + record.size();
  if (bytes == nullptr || before(bytes, record.data()) || before(end, bytes)) return {};
  return {bytes, end};
}

// The record from `offset` on, as it is now: while the message of an unknown type is up the table
// may be closed.
std::span<const uint8_t> RecordFrom(const DbTableInfo& table, size_t offset) {
  if (table.RecordBuffer == nullptr) return {};
  const std::span<const uint8_t> record(table.RecordBuffer, table.BufferAllocated);
  return record.subspan(std::min(offset, record.size()));
}

int32_t TextStep(const void* valueBytes, size_t limit) {
  if (valueBytes == nullptr) return 1;
  const auto* text = static_cast<const char*>(valueBytes);
  return static_cast<int32_t>(std::find(text, text + limit, '\0') - text) + 1;
}

}  // namespace

void GetDetachedFieldText(const QuorinSettings& settings, std::span<char> outText,
                          std::span<const uint8_t> value, const DbFieldInfo& field,
                          std::span<const uint8_t> record) {
  const FieldCodec* codec = FindFieldCodec(field.Type);
  if (codec == nullptr) return;
  codec->read({settings, value, record, field.Size, std::max(field.Decimals, 0)}, outText);
}

void GetFieldText(const QuorinSettings& settings, std::span<char> outText,
                  const uint8_t* fieldBytes, const DbFieldInfo& field,
                  std::span<const uint8_t> record) {
  GetDetachedFieldText(settings, outText, RestOf(record, fieldBytes), field, record);
}

void SetFieldText(const QuorinSettings& settings, std::span<uint8_t> outBytes, const char* text,
                  const DbFieldInfo& field) {
  const FieldCodec* codec = FindFieldCodec(field.Type);
  if (codec == nullptr || codec->write == nullptr) return;
  codec->write(
      {settings, outBytes, text != nullptr ? text : "", field.Size, std::max(field.Decimals, 0)});
}

int32_t GetFieldStoredSize(const QuorinSettings&, const DbFieldInfo& field, const void* valueBytes,
                           size_t limit) {
  const FieldCodec* codec = FindFieldCodec(field.Type);
  switch (codec != nullptr ? codec->walkStep : kStepUnknown) {
    case kStepBySize:
      return std::max(field.Size, 0);
    case kStepByText:
      return TextStep(valueBytes, limit);
    case kStepUnknown:
      ShowMessage(kVE011);
      return 0;
    default:
      return codec->walkStep;
  }
}

int32_t IsFieldNull(const QuorinSettings& settings, const DbTableInfo& table,
                    const char* fieldName) {
  constexpr int32_t kIsNull = 65535;
  if (table.RecordBuffer == nullptr || table.Fields == nullptr || fieldName == nullptr) return 0;
  size_t at = 0;
  for (const DbFieldInfo& field : std::span(table.Fields, static_cast<size_t>(table.FieldCount))) {
    const auto rest = RecordFrom(table, at);
    const bool nullable = (field.Flags & kFieldNullable) != 0;
    if (std::strcmp(field.Name, fieldName) == 0) {
      return nullable && !rest.empty() && rest[0] != 0 ? kIsNull : 0;
    }
    if (nullable) ++at;
    const auto value = RecordFrom(table, at);
    at += static_cast<size_t>(GetFieldStoredSize(settings, field, value.data(), value.size()));
  }
  return 0;
}

}  // namespace qrn
