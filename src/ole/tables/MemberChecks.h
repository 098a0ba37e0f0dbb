// What must hold of a control's rows, checked where they are compiled.
#pragma once

#include <cstddef>

#include "ole/tables/Members.h"

namespace qrn::ole {

constexpr char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// ASCII names without regard to case.
constexpr bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
  }
  return true;
}

// The row of that id, null if there is none.
template <class Row>
constexpr const Row* FindRow(std::span<const Row> rows, int32_t id) {
  for (const Row& row : rows) {
    if (row.id == id) return &row;
  }
  return nullptr;
}
constexpr const PropertyRow* FindProperty(const ControlTable& table, int32_t id) {
  return FindRow(table.properties, id);
}

// A persisted entry names a property that can be put and has no index; its name is the property's
// or its beginning, in any letter case.
constexpr bool Names(const PersistRow& row, const PropertyRow& property) {
  if (property.id != row.id || !property.index.empty()) return false;
  if (property.rules & (kReadOnly | kPutFails)) return false;
  const std::string_view name = row.name;
  return SameName(std::string_view(property.name).substr(0, name.size()), name);
}

// Every persisted entry is the extent or names a property. (No FindRow here: under the sanitizers
// g++ 12 takes no comparison of an address with null as constant.)
constexpr bool EveryRowNamesAProperty(const ControlTable& table) {
  for (const PersistRow& row : table.persisted) {
    bool found = row.Raw();
    for (const PropertyRow& property : table.properties) found = found || Names(row, property);
    if (!found) return false;
  }
  return true;
}

// A map begins with the extent.
constexpr bool ExtentStandsFirst(const ControlTable& table) {
  return table.persisted.size() >= 2 && table.persisted[0].id == kRawWidth &&
         table.persisted[1].id == kRawHeight;
}

// No id and no name stands for two members of one interface.
constexpr bool MembersAreUnambiguous(const ControlTable& table) {
  struct Member {
    int32_t id;
    std::string_view name;
  };
  const size_t properties = table.properties.size();
  const size_t count = properties + table.methods.size();
  auto member = [&](size_t i) {
    return i < properties
               ? Member{table.properties[i].id, table.properties[i].name}
               : Member{table.methods[i - properties].id, table.methods[i - properties].name};
  };
  for (size_t i = 0; i < count; ++i) {
    for (size_t j = 0; j < i; ++j) {
      if (member(i).id == member(j).id || SameName(member(i).name, member(j).name)) return false;
    }
  }
  return true;
}

constexpr bool EventsAreUnambiguous(const ControlTable& table) {
  for (size_t i = 0; i < table.events.size(); ++i) {
    for (size_t j = 0; j < i; ++j) {
      if (table.events[i].id == table.events[j].id) return false;
    }
  }
  return true;
}

constexpr bool IsSound(const ControlTable& table) {
  return EveryRowNamesAProperty(table) && ExtentStandsFirst(table) &&
         MembersAreUnambiguous(table) && EventsAreUnambiguous(table);
}

}  // namespace qrn::ole
