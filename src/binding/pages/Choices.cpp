#include "binding/pages/Choices.h"

#include <algorithm>
#include <span>

#include "binding/registry/ControlRegistry.h"
#include "core/DictionaryLookup.h"

namespace qrn {
namespace {

// Null without one that was read from a directory.
const DbDictionary* DictionaryOf(WindowHandle form, std::string_view source) {
  const DataControlEntry* entry = TheRegistry().FindDataControl([&](const DataControlEntry& each) {
    return each.Name == source && IsFormOf(each.Container, form);
  });
  const DbDictionary* dictionary = entry ? entry->Control->GetDictionary() : nullptr;
  return dictionary && dictionary->DdfDir[0] != '\0' ? dictionary : nullptr;
}

const DbTableInfo* TableOf(WindowHandle form, std::string_view source, std::string_view table) {
  const DbDictionary* dictionary = DictionaryOf(form, source);
  return dictionary ? DbFindTable(*dictionary, std::string(table).c_str()) : nullptr;
}

template <class Entry>
void AddNames(NameList& names, const Entry* entries, int32_t count) {
  const std::span all(entries, static_cast<size_t>(count));
  std::ranges::transform(all, std::back_inserter(names), &Entry::Name);
}

bool HasName(const DbTableInfo& table, int32_t keyNumber) {
  const std::span named(table.NamedIndexes, static_cast<size_t>(table.NamedIndexCount));
  return std::ranges::find(named, keyNumber, &DbFieldInfo::Offset) != named.end();
}

// Segments behind the first one of a key add nothing, nor does one of no field.
void AddNamelessKeys(NameList& names, const DbTableInfo& table) {
  int32_t key = 0;
  bool startsKey = true;
  for (const DbSegmentInfo& segment :
       std::span(table.Segments, static_cast<size_t>(table.SegmentCount))) {
    const DbFieldInfo* field =
        startsKey && !HasName(table, key) ? DbFindFieldById(table, segment.FieldId) : nullptr;
    if (field) names.emplace_back(field->Name);
    startsKey = (segment.Flags & kSegmentContinues) == 0;
    key += startsKey ? 1 : 0;
  }
}

}  // namespace

NameList FillSources(WindowHandle form) {
  NameList names;
  TheRegistry().WalkDataControls([&](const DataControlEntry& entry) {
    if (IsFormOf(entry.Container, form)) names.push_back(entry.Name);
  });
  return names;
}

NameList FillTables(WindowHandle form, std::string_view source) {
  NameList names;
  if (const DbDictionary* dictionary = DictionaryOf(form, source)) {
    AddNames(names, dictionary->Tables, dictionary->TableCount);
  }
  return names;
}

NameList FillFields(WindowHandle form, std::string_view source, std::string_view table) {
  NameList names;
  if (const DbTableInfo* found = TableOf(form, source, table)) {
    AddNames(names, found->Fields, found->FieldCount);
  }
  return names;
}

NameList FillIndexes(WindowHandle form, std::string_view source, std::string_view table) {
  NameList names;
  if (const DbTableInfo* found = TableOf(form, source, table)) {
    AddNames(names, found->NamedIndexes, found->NamedIndexCount);
    AddNamelessKeys(names, *found);
  }
  return names;
}

}  // namespace qrn
