#include "core/DictionaryLookup.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace qrn {
namespace {

std::span<const DbSegmentInfo> SegmentsOf(const DbTableInfo& table) {
  return {table.Segments, static_cast<size_t>(table.SegmentCount)};
}

bool EndsKey(const DbSegmentInfo& segment) { return (segment.Flags & kSegmentContinues) == 0; }

bool IndexesFieldNamed(const DbTableInfo& table, const DbSegmentInfo& segment, const char* name) {
  const DbFieldInfo* field = DbFindFieldById(table, segment.FieldId);
  return field != nullptr && std::strcmp(field->Name, name) == 0;
}

int32_t FindNamedIndex(const DbTableInfo& table, const char* name) {
  for (int32_t i = 0; i < table.NamedIndexCount; ++i) {
    const DbFieldInfo& index = table.NamedIndexes[i];
    if (std::strcmp(index.Name, name) == 0) return DbKeyToSegment(table, index.Offset);
  }
  return -1;
}

int32_t FindKeyOfField(const DbTableInfo& table, const char* name) {
  bool startsKey = true;
  for (int32_t i = 0; i < table.SegmentCount; ++i) {
    if (startsKey && IndexesFieldNamed(table, table.Segments[i], name)) return i;
    startsKey = EndsKey(table.Segments[i]);
  }
  return -1;
}

int32_t FindIndexNamed(const DbTableInfo& table, const char* name) {
  const int32_t named = FindNamedIndex(table, name);
  return named != -1 ? named : FindKeyOfField(table, name);
}

}  // namespace

DbTableInfo* DbFindTable(const DbDictionary& dictionary, const char* name) noexcept {
  if (name == nullptr) return nullptr;
  for (int32_t i = 0; i < dictionary.TableCount; ++i) {
    if (std::strcmp(dictionary.Tables[i].Name, name) == 0) return &dictionary.Tables[i];
  }
  return nullptr;
}

int32_t DbFindField(const DbTableInfo& table, const char* name) noexcept {
  if (name == nullptr) return -1;
  for (int32_t i = 0; i < table.FieldCount; ++i) {
    if (std::strcmp(table.Fields[i].Name, name) == 0) return i;
  }
  return -1;
}

const DbFieldInfo* DbFindFieldById(const DbTableInfo& table, int32_t fieldId) noexcept {
  for (int32_t i = 0; i < table.FieldCount; ++i) {
    if (table.Fields[i].FieldId == fieldId) return &table.Fields[i];
  }
  return nullptr;
}

const DbFieldInfo* DbFieldAt(const DbTableInfo& table, int32_t position) noexcept {
  return position >= 0 && position < table.FieldCount ? &table.Fields[position] : nullptr;
}

int32_t DbFindIndex(const DbTableInfo& table, const char* name) noexcept {
  if (name == nullptr || name[0] == '\0') return -1;
  return FindIndexNamed(table, name);
}

int32_t DbFindIndexOrFirst(const DbTableInfo& table, const char* name) noexcept {
  if (name == nullptr) return 0;
  return std::max(FindIndexNamed(table, name), 0);
}

int32_t DbKeyToSegment(const DbTableInfo& table, int32_t keyNumber) noexcept {
  if (keyNumber <= 0) return 0;
  int32_t keysPassed = 0;
  for (int32_t i = 0; i + 1 < table.SegmentCount; ++i) {
    keysPassed += EndsKey(table.Segments[i]) ? 1 : 0;
    if (keysPassed == keyNumber) return i + 1;
  }
  return 0;
}

int32_t DbSegmentToKey(const DbTableInfo& table, int32_t indexPosition) noexcept {
  constexpr int32_t kNoKeyNumber = 255;
  if (indexPosition == -1) return kNoKeyNumber;
  const int32_t end = std::clamp(indexPosition, 0, table.SegmentCount);
  const auto before = SegmentsOf(table).first(static_cast<size_t>(end));
  return static_cast<int32_t>(std::count_if(before.begin(), before.end(), EndsKey));
}

void DbTrimName(char* text, size_t width) noexcept {
  while (width > 0 && text[width - 1] == ' ') text[--width] = '\0';
}

}  // namespace qrn
