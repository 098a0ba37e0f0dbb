// Fields of the record buffer as text: read by offset, written by walking.
#include <algorithm>
#include <cstring>

#include "core/DictionaryLookup.h"
#include "core/Record.h"
#include "core/RecordBuffer.h"
#include "core/RecordWalk.h"
#include "core/ReturnCodes.h"
#include "fields/FieldText.h"

namespace qrn {
namespace {

Status StoreAt(DbEngine& engine, DbTableInfo& table, const RecordWalk& walk, const char* text) {
  const DbFieldInfo& field = walk.Field();
  SetFieldText(engine.Settings, walk.Place(), text, field);
  if (field.Type != kBlob) return kSuccess;
  int32_t endOffset = table.RecordLength;
  const int32_t stored =
      SetBlobField(engine.Settings, table, text, field, walk.Offset(), &endOffset);
  return stored < 0 ? kFailure : kSuccess;
}

}  // namespace

void DbReadFieldInto(DbEngine& engine, const DbTableInfo& table, int32_t fieldPosition,
                     std::span<char> outText) noexcept {
  // Two NULs: a Bit is one raw byte without a terminator of its own.
  std::fill_n(outText.begin(), std::min<size_t>(outText.size(), 2), '\0');
  const DbFieldInfo* field = DbFieldAt(table, fieldPosition);
  if (field == nullptr) return;
  const auto value = RecordBytesFrom(table, field->Offset);
  if (value.empty()) return;
  GetDetachedFieldText(engine.Settings, outText, value, *field, RecordBytes(table));
}

const char* DbReadField(DbEngine& engine, const DbTableInfo& table,
                        int32_t fieldPosition) noexcept {
  DbReadFieldInto(engine, table, fieldPosition, engine.FieldText);
  return engine.FieldText;
}

const char* DbReadFieldByName(DbEngine& engine, const DbTableInfo& table,
                              const char* fieldName) noexcept {
  return DbReadField(engine, table, DbFindField(table, fieldName));
}

Status DbWriteField(DbEngine& engine, DbTableInfo& table, int32_t fieldPosition,
                    const char* text) noexcept {
  if (table.RecordBuffer == nullptr) return kNotOpen;
  RecordWalk walk(engine.Settings, table);
  while (walk.Next()) {
    if (walk.Position() == fieldPosition) return StoreAt(engine, table, walk, text);
    walk.StepAsText(text);
  }
  return kNoField;
}

Status DbWriteFieldByName(DbEngine& engine, DbTableInfo& table, const char* fieldName,
                          const char* text) noexcept {
  return DbWriteField(engine, table, DbFindField(table, fieldName), text);
}

Status DbWriteFields(DbEngine& engine, DbTableInfo& table, int32_t firstPosition,
                     std::span<const char* const> texts) noexcept {
  if (table.RecordBuffer == nullptr) return kNotOpen;
  RecordWalk walk(engine.Settings, table);
  while (walk.Next()) {
    const int64_t index = int64_t{walk.Position()} - firstPosition;
    if (index < 0 || index >= static_cast<int64_t>(texts.size())) {
      walk.Step();
      continue;
    }
    const char* text = texts[static_cast<size_t>(index)];
    SetFieldText(engine.Settings, walk.Place(), text, walk.Field());
    walk.StepAsText(text);
  }
  return kSuccess;
}

void DbReadRecordImage(const DbTableInfo& table, std::span<uint8_t> out) noexcept {
  const auto record = RecordBytes(table);
  std::copy_n(record.begin(), std::min(record.size(), out.size()), out.begin());
}

void DbWriteRecordImage(DbTableInfo& table, std::span<const uint8_t> image) noexcept {
  const auto record = RecordBytes(table);
  std::copy_n(image.begin(), std::min(record.size(), image.size()), record.begin());
}

}  // namespace qrn
