// From the names that a bound control holds to the table.
#include <functional>

#include "binding/registry/ControlRegistry.h"
#include "core/ReturnCodes.h"
#include "core/Table.h"

namespace qrn {
namespace {

DbTableInfo* TableOf(const DbDictionary& dictionary, std::string_view name) noexcept {
  for (int32_t i = 0; i < dictionary.TableCount; ++i) {
    if (dictionary.Tables[i].Name == name) return &dictionary.Tables[i];
  }
  return nullptr;
}

bool Holds(const DbDictionary* dictionary, const DbTableInfo& table) noexcept {
  if (dictionary == nullptr) return false;
  const std::less<const DbTableInfo*> before;
  const DbTableInfo* tables = dictionary->Tables;
  return !before(&table, tables) && before(&table, tables + dictionary->TableCount);
}

bool Answers(const DataControlEntry& entry, WindowHandle container, std::string_view source) {
  return entry.Name == source && IsFormOf(entry.Container, container);
}

}  // namespace

DbTableInfo* ControlRegistry::ResolveTable(WindowHandle container, std::string_view source,
                                           std::string_view table) const noexcept {
  DbTableInfo* found = nullptr;
  dataControls_.Find([&](const DataControlEntry& entry) {
    if (!Answers(entry, container, source)) return false;
    const DbDictionary* dictionary = entry.Control->GetDictionary();
    if (dictionary == nullptr) return true;
    found = TableOf(*dictionary, table);
    return found != nullptr;
  });
  return found;
}

int32_t ControlRegistry::GetFieldType(WindowHandle container, std::string_view source,
                                      std::string_view table,
                                      std::string_view field) const noexcept {
  const DbTableInfo* found = ResolveTable(container, source, table);
  for (int32_t i = 0; found != nullptr && i < found->FieldCount; ++i) {
    if (found->Fields[i].Name == field) return found->Fields[i].Type;
  }
  return -1;
}

Status ControlRegistry::DbOpenOnDemand(DbTableInfo& table, WindowHandle container,
                                       std::string_view source) noexcept {
  const DataControlEntry* owner = dataControls_.Find([&](const DataControlEntry& entry) {
    return Answers(entry, container, source) && Holds(entry.Control->GetDictionary(), table);
  });
  if (owner == nullptr) return kNoControl;
  const DataControl& control = *owner->Control;
  return DbOpenOrCreate(TheEngine(), table, control.DdfDirText(), control.OwnerNameText(),
                        control.OpenModeValue());
}

bool ControlRegistry::IsAlive(const DbTableInfo& table) const noexcept {
  if (Holds(TheFlatState().CurrentDictionary, table)) return true;
  return dataControls_.Find([&](const DataControlEntry& entry) {
    return Holds(entry.Control->GetDictionary(), table);
  }) != nullptr;
}

}  // namespace qrn
