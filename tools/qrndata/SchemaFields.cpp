// [[table.field]]: types, sizes, and where each field stands in the record.
#include <algorithm>

#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/SchemaParts.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

constexpr int64_t kMaxOffset = 32767;  // the dictionary's 16 bits, signed

const FieldTypeRow& ReadType(const TomlReader& reader) {
  const std::string name = reader.RequiredText("type");
  const FieldTypeRow* type = FindFieldType(name);
  if (type == nullptr) {
    reader.Refuse("type",
                  "\"" + name + "\" is no field type; expected one of " + AllFieldTypeNames());
  }
  return *type;
}

int32_t ReadSize(const TomlReader& reader, const FieldTypeRow& type) {
  const auto size = reader.Integer("size", 1, kMaxOffset);
  const std::string expected = std::string(type.name) + " expects a size of " + type.sizeText;
  if (!size && type.standard == 0) reader.Refuse("size", expected);
  if (size && !type.Takes(*size)) reader.Refuse("size", expected);
  return static_cast<int32_t>(size.value_or(type.standard));
}

int32_t ReadDecimals(const TomlReader& reader, const FieldTypeRow& type, int32_t size) {
  const auto decimals = reader.Integer("decimals", 0, 255);
  if (!decimals) return 0;
  const int32_t most = type.MaxDecimals(size);
  if (type.family != Family::Digits) {
    reader.Refuse("decimals", std::string(type.name) + " has no decimals");
  }
  if (*decimals > most) {
    reader.Refuse("decimals", SizedTypeName(type.code, size) + " has at most " +
                                  Counted(static_cast<uint64_t>(most), "decimal"));
  }
  return static_cast<int32_t>(*decimals);
}

std::string ReadFieldName(const TomlReader& reader, const Table& table) {
  std::string name = ReadSchemaName(reader, "name", kMaxNameLength);
  if (name.size() > 2 && name[2] == '$') {
    reader.Refuse("name",
                  "the third character of a field name may not be $: that marks the "
                  "dictionary's own fields");
  }
  for (const qrn::DbFieldInfo& field : table.fields) {
    if (SameName(field.Name, name)) {
      reader.Refuse("name", "the table has a field " + Quoted(field.Name) + " already");
    }
  }
  return name;
}

// What rules out another field behind, or beside, the ones that are there.
void RequireOrder(const TomlReader& reader, const Table& table, const FieldTypeRow& type) {
  if (VariableField(table) != nullptr) {
    reader.Refuse("a Note or LVar field must be the table's last field, and its only one");
  }
  const bool isVariable = type.code == qrn::kNote || type.code == qrn::kLVar;
  if (isVariable && HasVariableRecords(table)) {
    reader.Refuse("a table with a Blob field cannot have a Note or LVar field as well");
  }
}

// `walked` is where forms find the field when they walk the record.
int32_t ReadOffset(const TomlReader& reader, const qrn::DbFieldInfo& field, int64_t walked,
                   std::vector<std::string>& warnings) {
  const int64_t offset = reader.Integer("offset", 0, kMaxOffset).value_or(walked);
  if (offset != walked) {
    warnings.push_back(AtPlace(reader.File(), PositionOf(*reader.Table().get("offset")),
                               "field " + Quoted(field.Name) + " stands at " +
                                   std::to_string(offset) + ", but forms write it at " +
                                   std::to_string(walked) + ", behind the fields before it"));
  }
  if (offset + field.Size > kMaxOffset) {
    reader.Refuse("the record is longer than " + std::to_string(kMaxOffset) + " bytes");
  }
  return static_cast<int32_t>(offset);
}

}  // namespace

void ReadSchemaFields(const TomlReader& tableReader, Table& table,
                      std::vector<std::string>& warnings) {
  const toml::array* entries = tableReader.Array("field");
  if (entries == nullptr || entries->empty()) tableReader.Refuse("a table needs a \"field\"");
  int64_t walked = 0;
  for (const toml::node& entry : *entries) {
    if (!entry.is_table()) {
      throw BadInput(tableReader.File(), PositionOf(entry), "\"field\" expects tables");
    }
    const TomlReader reader(tableReader.File(), *entry.as_table(), "field");
    reader.AllowOnly({"name", "type", "size", "decimals", "nullable", "offset"});
    const FieldTypeRow& type = ReadType(reader);
    RequireOrder(reader, table, type);
    qrn::DbFieldInfo field =
        MakeField(ReadFieldName(reader, table), type.code, ReadSize(reader, type));
    field.Decimals = ReadDecimals(reader, type, field.Size);
    field.Flags = reader.Flag("nullable") ? qrn::kFieldNullable : 0;
    field.Offset = ReadOffset(reader, field, walked + (IsNullable(field) ? 1 : 0), warnings);
    field.FieldId = static_cast<int32_t>(table.fields.size()) + 1;
    walked = field.Offset + field.Size;
    table.fields.push_back(field);
  }
}

}  // namespace qrndata
