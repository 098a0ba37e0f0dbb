#include "tools/qrndata/export/FieldChoice.h"

#include <algorithm>

#include "tools/qrndata/ColumnMap.h"

namespace qrndata {

namespace {

bool HasFields(const Table& table, const Key& key) {
  return std::ranges::all_of(key.segments, [&](const Segment& segment) {
    return FindField(table, segment.fieldId) != nullptr;
  });
}

}  // namespace

Table WithFields(const Table& table, const std::string& fields) {
  if (fields.empty()) return table;
  Table chosen = table;
  chosen.fields.clear();
  for (const size_t slot : ParseFieldList(table, fields, "--fields")) {
    chosen.fields.push_back(table.fields[slot]);
  }
  std::erase_if(chosen.keys, [&](const Key& key) { return !HasFields(chosen, key); });
  return chosen;
}

}  // namespace qrndata
