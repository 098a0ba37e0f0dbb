// [[table.field]]: types, sizes, and where each field stands in the record.
#include <algorithm>

#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/Messages.h"
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
    reader.Refuse("type", Say(Message::NoFieldType, name, AllFieldTypeNames()));
  }
  return *type;
}

int32_t ReadSize(const TomlReader& reader, const FieldTypeRow& type) {
  const auto size = reader.Integer("size", 1, kMaxOffset);
  const std::string expected = Say(Message::SizeExpected, type.name, SizesOf(type));
  if (!size && type.standard == 0) reader.Refuse("size", expected);
  if (size && !type.Takes(*size)) reader.Refuse("size", expected);
  return static_cast<int32_t>(size.value_or(type.standard));
}

int32_t ReadDecimals(const TomlReader& reader, const FieldTypeRow& type, int32_t size) {
  const auto decimals = reader.Integer("decimals", 0, 255);
  if (!decimals) return 0;
  const int32_t most = type.MaxDecimals(size);
  if (type.family != Family::Digits) {
    reader.Refuse("decimals", Say(Message::HasNoDecimals, type.name));
  }
  if (*decimals > most) {
    reader.Refuse("decimals", Say(Message::HasAtMost, SizedTypeName(type.code, size),
                                  Counted(static_cast<uint64_t>(most), Message::Decimals)));
  }
  return static_cast<int32_t>(*decimals);
}

std::string ReadFieldName(const TomlReader& reader, const Table& table) {
  std::string name = ReadSchemaName(reader, "name", kMaxNameLength);
  if (name.size() > 2 && name[2] == '$') {
    reader.Refuse("name", Say(Message::DollarInName));
  }
  for (const qrn::DbFieldInfo& field : table.fields) {
    if (SameName(field.Name, name)) {
      reader.Refuse("name", Say(Message::FieldNameTaken, Quoted(field.Name)));
    }
  }
  return name;
}

// What rules out another field behind, or beside, the ones that are there.
void RequireOrder(const TomlReader& reader, const Table& table, const FieldTypeRow& type) {
  if (VariableField(table) != nullptr) {
    reader.Refuse(Say(Message::NoteNotLast));
  }
  const bool isVariable = type.code == qrn::kNote || type.code == qrn::kLVar;
  if (isVariable && HasVariableRecords(table)) {
    reader.Refuse(Say(Message::NoteBesideBlob));
  }
}

// `walked` is where forms find the field when they walk the record.
int32_t ReadOffset(const TomlReader& reader, const qrn::DbFieldInfo& field, int64_t walked,
                   std::vector<std::string>& warnings) {
  const int64_t offset = reader.Integer("offset", 0, kMaxOffset).value_or(walked);
  if (offset != walked) {
    warnings.push_back(AtPlace(reader.File(), PositionOf(*reader.Table().get("offset")),
                               Say(Message::OffsetElsewhere, Quoted(field.Name), offset, walked)));
  }
  if (offset + field.Size > kMaxOffset) {
    reader.Refuse(Say(Message::RecordTooLong, kMaxOffset));
  }
  return static_cast<int32_t>(offset);
}

}  // namespace

void ReadSchemaFields(const TomlReader& tableReader, Table& table,
                      std::vector<std::string>& warnings) {
  const toml::array* entries = tableReader.Array("field");
  if (entries == nullptr || entries->empty()) tableReader.Refuse(Say(Message::TableNeedsField));
  int64_t walked = 0;
  for (const toml::node& entry : *entries) {
    if (!entry.is_table()) {
      throw BadInput(tableReader.File(), PositionOf(entry), Say(Message::TablesExpected, "field"));
    }
    const TomlReader reader(tableReader.File(), *entry.as_table(), Message::AField);
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
