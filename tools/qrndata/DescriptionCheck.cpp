#include <algorithm>

#include "btrieve/keys/KeyTypes.h"
#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/TableChecks.h"

namespace qrndata {

namespace {

size_t Begin(const qrn::DbFieldInfo& field) {
  return static_cast<size_t>(std::max(field.Offset - (IsNullable(field) ? 1 : 0), 0));
}

size_t End(const qrn::DbFieldInfo& field) {
  return static_cast<size_t>(field.Offset) + static_cast<size_t>(field.Size);
}

std::string Named(const qrn::DbFieldInfo& field) { return "field " + Quoted(field.Name) + ": "; }

void CheckField(const qrn::DbFieldInfo& field, Faults& faults) {
  const FieldTypeRow* type = FindFieldType(field.Type);
  if (type == nullptr) {
    faults.push_back(Named(field) + "type " + std::to_string(field.Type) + " is not known");
    return;
  }
  if (!type->Takes(field.Size)) {
    faults.push_back(Named(field) + SizedTypeName(field.Type, field.Size) +
                     ", where forms expect " + type->sizeText);
  }
  if (type->family == Family::Digits && field.Decimals > type->MaxDecimals(field.Size)) {
    faults.push_back(Named(field) + Counted(static_cast<uint64_t>(field.Decimals), "decimal") +
                     ", but the size has room for " +
                     std::to_string(std::max(type->MaxDecimals(field.Size), 0)));
  }
  if (IsNullable(field) && field.Offset == 0) {
    faults.push_back(Named(field) + "nullable at offset 0, without room for its null indicator");
  }
}

// Forms read by offset and write by walking the fields in their order.
void CheckWalk(const Table& table, Faults& faults) {
  size_t walked = 0;
  for (const qrn::DbFieldInfo& field : table.fields) {
    walked += IsNullable(field) ? 1 : 0;
    if (walked != static_cast<size_t>(field.Offset)) {
      faults.push_back(Named(field) + "stands at offset " + std::to_string(field.Offset) +
                       ", but forms write it at " + std::to_string(walked) +
                       ", behind the fields before it");
      return;  // All further ones are shifted by as much.
    }
    walked = End(field);
  }
}

void CheckOverlaps(const Table& table, Faults& faults) {
  std::vector<const qrn::DbFieldInfo*> byPlace;
  for (const qrn::DbFieldInfo& field : table.fields) byPlace.push_back(&field);
  std::sort(byPlace.begin(), byPlace.end(),
            [](const auto* left, const auto* right) { return Begin(*left) < Begin(*right); });
  for (size_t at = 1; at < byPlace.size(); ++at) {
    if (End(*byPlace[at - 1]) > Begin(*byPlace[at])) {
      faults.push_back(Named(*byPlace[at]) + "overlaps field " + Quoted(byPlace[at - 1]->Name));
    }
  }
}

void CheckKey(const Table& table, size_t number, Faults& faults) {
  const Key& key = table.keys[number];
  const std::string name = "key " + std::to_string(number) + ": ";
  if ((key.segments.back().flags & kIndexContinues) != 0) {
    faults.push_back(name + "its last segment says that another follows");
  }
  for (const Segment& segment : key.segments) {
    const qrn::DbFieldInfo* field = FindField(table, segment.fieldId);
    if (field == nullptr) continue;  // The reader has told.
    const btrieve::KeyTypeRow* type = btrieve::FindKeyType(static_cast<uint8_t>(field->Type));
    if (type == nullptr || !type->Takes(static_cast<size_t>(field->Size))) {
      faults.push_back(name + "field " + Quoted(field->Name) + " (" +
                       SizedTypeName(field->Type, field->Size) + ") cannot be a key");
    }
  }
}

}  // namespace

Faults CheckDescription(const Table& table) {
  Faults faults;
  if (table.fields.empty()) faults.emplace_back("the table has no fields");
  for (const qrn::DbFieldInfo& field : table.fields) CheckField(field, faults);
  CheckOverlaps(table, faults);
  CheckWalk(table, faults);
  for (size_t number = 0; number < table.keys.size(); ++number) CheckKey(table, number, faults);
  return faults;
}

}  // namespace qrndata
