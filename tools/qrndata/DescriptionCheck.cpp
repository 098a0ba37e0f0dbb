#include <algorithm>

#include "btrieve/keys/KeyTypes.h"
#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/TableChecks.h"

namespace qrndata {

namespace {

size_t Begin(const qrn::DbFieldInfo& field) {
  return static_cast<size_t>(std::max(field.Offset - (IsNullable(field) ? 1 : 0), 0));
}

size_t End(const qrn::DbFieldInfo& field) {
  return static_cast<size_t>(field.Offset) + static_cast<size_t>(field.Size);
}

std::string OfField(const qrn::DbFieldInfo& field, const std::string& text) {
  return Say(Message::OfField, Quoted(field.Name), text);
}

void CheckField(const qrn::DbFieldInfo& field, Faults& faults) {
  const FieldTypeRow* type = FindFieldType(field.Type);
  if (type == nullptr) {
    faults.push_back(OfField(field, Say(Message::TypeUnknown, field.Type)));
    return;
  }
  if (!type->Takes(field.Size)) {
    faults.push_back(OfField(
        field, Say(Message::OtherSize, SizedTypeName(field.Type, field.Size), SizesOf(*type))));
  }
  if (type->family == Family::Digits && field.Decimals > type->MaxDecimals(field.Size)) {
    faults.push_back(
        OfField(field, Say(Message::TooManyDecimals,
                           Counted(static_cast<uint64_t>(field.Decimals), Message::Decimals),
                           std::max(type->MaxDecimals(field.Size), 0))));
  }
  if (IsNullable(field) && field.Offset == 0) {
    faults.push_back(OfField(field, Say(Message::NoRoomForNull)));
  }
}

// Forms read by offset and write by walking the fields in their order.
void CheckWalk(const Table& table, Faults& faults) {
  size_t walked = 0;
  for (const qrn::DbFieldInfo& field : table.fields) {
    walked += IsNullable(field) ? 1 : 0;
    if (walked != static_cast<size_t>(field.Offset)) {
      faults.push_back(OfField(field, Say(Message::StandsElsewhere, field.Offset, walked)));
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
      faults.push_back(
          OfField(*byPlace[at], Say(Message::Overlaps, Quoted(byPlace[at - 1]->Name))));
    }
  }
}

void CheckKey(const Table& table, size_t number, Faults& faults) {
  const Key& key = table.keys[number];
  const auto add = [&](const std::string& text) {
    faults.push_back(Say(Message::OfKey, number, text));
  };
  if ((key.segments.back().flags & kIndexContinues) != 0) {
    add(Say(Message::LastSegmentGoesOn));
  }
  for (const Segment& segment : key.segments) {
    const qrn::DbFieldInfo* field = FindField(table, segment.fieldId);
    if (field == nullptr) continue;  // The reader has told.
    const btrieve::KeyTypeRow* type = btrieve::FindKeyType(static_cast<uint8_t>(field->Type));
    if (type == nullptr || !type->Takes(static_cast<size_t>(field->Size))) {
      add(Say(Message::CannotBeKey, Quoted(field->Name), SizedTypeName(field->Type, field->Size)));
    }
  }
}

}  // namespace

Faults CheckDescription(const Table& table) {
  Faults faults;
  if (table.fields.empty()) faults.push_back(Say(Message::TableHasNoFields));
  for (const qrn::DbFieldInfo& field : table.fields) CheckField(field, faults);
  CheckOverlaps(table, faults);
  CheckWalk(table, faults);
  for (size_t number = 0; number < table.keys.size(); ++number) CheckKey(table, number, faults);
  return faults;
}

}  // namespace qrndata
