#include "tools/qrndata/TableModel.h"

#include <algorithm>
#include <cstring>

#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

template <class Predicate>
const qrn::DbFieldInfo* FindIf(const Table& table, Predicate matches) {
  const auto found = std::find_if(table.fields.begin(), table.fields.end(), matches);
  return found == table.fields.end() ? nullptr : &*found;
}

}  // namespace

qrn::DbFieldInfo MakeField(std::string_view name, int32_t type, int32_t size) {
  qrn::DbFieldInfo field{};
  std::memcpy(field.Name, name.data(), std::min(name.size(), kMaxNameLength));
  field.Type = type;
  field.Size = size;
  return field;
}

bool IsNullable(const qrn::DbFieldInfo& field) noexcept {
  return (field.Flags & qrn::kFieldNullable) != 0;
}

bool IsVariableText(const qrn::DbFieldInfo& field) noexcept {
  return field.Type == qrn::kNote || field.Type == qrn::kLVar;
}

const qrn::DbFieldInfo* FindField(const Table& table, std::string_view name) {
  return FindIf(table, [&](const qrn::DbFieldInfo& field) { return field.Name == name; });
}

const qrn::DbFieldInfo* FindField(const Table& table, int fieldId) {
  return FindIf(table, [&](const qrn::DbFieldInfo& field) { return field.FieldId == fieldId; });
}

size_t RecordLength(const Table& table) {
  if (table.fields.empty()) return 0;
  const qrn::DbFieldInfo* last = &table.fields.front();
  for (const qrn::DbFieldInfo& field : table.fields) {
    if (field.Offset > last->Offset) last = &field;
  }
  const int32_t offset = std::max(last->Offset, 0);
  return static_cast<size_t>(offset) + static_cast<size_t>(std::max(last->Size, 0));
}

const qrn::DbFieldInfo* VariableField(const Table& table) { return FindIf(table, IsVariableText); }

bool HasVariableRecords(const Table& table) {
  return FindIf(table, [](const qrn::DbFieldInfo& field) {
           return IsVariableText(field) || field.Type == qrn::kBlob;
         }) != nullptr;
}

size_t FixedLength(const Table& table) {
  const qrn::DbFieldInfo* variable = VariableField(table);
  if (variable == nullptr) return RecordLength(table);
  return static_cast<size_t>(std::max(variable->Offset - (IsNullable(*variable) ? 1 : 0), 0));
}

std::string Quoted(std::string_view codePageName) { return "\"" + Show(codePageName) + "\""; }

}  // namespace qrndata
