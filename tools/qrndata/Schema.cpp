#include "tools/qrndata/Schema.h"

#include <algorithm>
#include <set>

#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/DictionaryTables.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/SchemaParts.h"
#include "tools/qrndata/TableFile.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

constexpr int kMaxTableId = 32767;
constexpr size_t kShortestRecord = 4;  // that the record manager takes, without variable parts
constexpr uint16_t kPageSizes[] = {4096, 8192, 16384};

class SchemaReader {
 public:
  SchemaReader(std::string_view file, const std::filesystem::path& directory)
      : file_(file), directory_(directory) {}

  Schema Read(const toml::table& document);

 private:
  Table ReadTable(const TomlReader& reader);
  int ReadId(const TomlReader& reader) const;
  std::string ReadTableName(const TomlReader& reader) const;
  std::string ReadLocation(const TomlReader& reader, const Table& table) const;
  void ChoosePageSize(const TomlReader& reader, Table& table) const;

  std::string_view file_;
  const std::filesystem::path& directory_;
  int64_t standardFlags_ = 130;
  Schema schema_;
};

bool IsPlain(std::string_view name) {
  return std::all_of(name.begin(), name.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           c == '-';
  });
}

int SchemaReader::ReadId(const TomlReader& reader) const {
  const auto& tables = schema_.tables;
  const auto highest =
      std::max_element(tables.begin(), tables.end(),
                       [](const Table& left, const Table& right) { return left.id < right.id; });
  const int next = highest == tables.end() ? kFirstUserTable : highest->id + 1;
  const auto id =
      static_cast<int>(reader.Integer("id", kFirstUserTable, kMaxTableId).value_or(next));
  if (std::any_of(tables.begin(), tables.end(),
                  [&](const Table& table) { return table.id == id; })) {
    reader.Refuse("id", Say(Message::TableIdTaken, id));
  }
  return id;
}

std::string SchemaReader::ReadTableName(const TomlReader& reader) const {
  std::string name = ReadSchemaName(reader, "name", kMaxNameLength);
  const auto isTaken = [&](const Table& table) { return SameName(table.name, name); };
  if (std::any_of(schema_.tables.begin(), schema_.tables.end(), isTaken) ||
      std::any_of(DictionaryTables().begin(), DictionaryTables().end(), isTaken)) {
    reader.Refuse("name", Say(Message::TableNameTaken, Quoted(name)));
  }
  return name;
}

std::string SchemaReader::ReadLocation(const TomlReader& reader, const Table& table) const {
  const std::string standard =
      IsPlain(table.name) ? table.name : "table" + std::to_string(table.id);
  std::string location =
      reader.Has("file") ? ReadSchemaName(reader, "file", kMaxLocationLength) : standard + ".btr";
  const bool isTaken =
      std::any_of(schema_.tables.begin(), schema_.tables.end(), [&](const Table& other) {
        return SameName(DataFilePath({}, other.location).generic_string(),
                        DataFilePath({}, location).generic_string());
      });
  if (isTaken) reader.Refuse("file", Say(Message::DataFileTaken, Quoted(location)));
  return location;
}

void SchemaReader::ChoosePageSize(const TomlReader& reader, Table& table) const {
  btrieve::FileSpec spec;
  const auto given = reader.Integer("page_size", 512, 16384);
  Status status = 0;
  for (const uint16_t size : kPageSizes) {
    table.pageSize = static_cast<uint16_t>(given.value_or(size));
    status = btrieve::ParseCreateBlock(CreateBlock(table), spec);
    const bool isTooSmall = status == btrieve::kRecordLength || status == btrieve::kKeyLength ||
                            status == btrieve::kNumberOfKeys;
    if (given || !isTooSmall) break;
  }
  if (status == btrieve::kPageSize) {
    reader.Refuse("page_size", Say(Message::PageSizeExpected));
  }
  if (status == btrieve::kRecordLength && FixedLength(table) < kShortestRecord) {
    reader.Refuse(Say(VariableField(table) == nullptr ? Message::RecordsTooShort
                                                      : Message::RecordsTooShortBeforeNote,
                      Quoted(table.name), Counted(FixedLength(table), Message::ByteCount),
                      kShortestRecord));
  }
  if (status != 0) {
    reader.Refuse(Say(Message::TableRefused, Quoted(table.name), FixedLength(table), table.pageSize,
                      StatusText(status)));
  }
}

Table SchemaReader::ReadTable(const TomlReader& reader) {
  reader.AllowOnly({"name", "id", "file", "page_size", "file_flags", "field", "key"});
  Table table;
  table.id = ReadId(reader);
  table.name = ReadTableName(reader);
  table.location = ReadLocation(reader, table);
  table.fileFlags =
      static_cast<uint16_t>(reader.Integer("file_flags", 0, 65535).value_or(standardFlags_));
  ReadSchemaFields(reader, table, schema_.warnings);
  ReadSchemaKeys(reader, table, directory_);
  ChoosePageSize(reader, table);
  if (std::any_of(table.fields.begin(), table.fields.end(), IsNullable)) {
    table.flags |= kHasNullableFields;
  }
  return table;
}

// Field ids grow with the table ids: readers may take the rows in one pass.
void GiveFieldIds(std::vector<Table>& tables) {
  int next = DictionaryTables().back().fields.back().FieldId + 1;
  for (Table& table : tables) {
    for (Key& key : table.keys) {
      for (Segment& segment : key.segments) segment.fieldId += next - 1;
    }
    for (qrn::DbFieldInfo& field : table.fields) {
      field.FileId = table.id;
      field.FieldId = next++;
    }
    next += static_cast<int>(std::count_if(table.keys.begin(), table.keys.end(),
                                           [](const Key& key) { return !key.name.empty(); }));
  }
  if (next > 32767) throw Failure(kBadInput, Say(Message::TooManyNames));
}

Schema SchemaReader::Read(const toml::table& document) {
  const TomlReader reader(file_, document, Message::ASchema);
  reader.AllowOnly({"title", "file_flags", "table"});
  standardFlags_ = reader.Integer("file_flags", 0, 65535).value_or(standardFlags_);
  const toml::array* tables = reader.Array("table");
  if (tables == nullptr || tables->empty()) {
    throw BadInput(file_, {1, 1}, Say(Message::SchemaNeedsTable));
  }
  for (const toml::node& entry : *tables) {
    if (!entry.is_table()) throw BadInput(file_, PositionOf(entry), Say(Message::TableExpected));
    if (schema_.tables.size() == qrn::kMaxTables) {
      throw BadInput(file_, PositionOf(entry), Say(Message::TooManyTables));
    }
    schema_.tables.push_back(ReadTable(TomlReader(file_, *entry.as_table(), Message::ATable)));
  }
  std::sort(schema_.tables.begin(), schema_.tables.end(),
            [](const Table& left, const Table& right) { return left.id < right.id; });
  GiveFieldIds(schema_.tables);
  return std::move(schema_);
}

}  // namespace

std::string ReadSchemaName(const TomlReader& reader, std::string_view entry, size_t limit) {
  const std::string utf8 = reader.RequiredText(entry);
  const Converted name = ToCodePage(utf8, OnUnmappable::Error);
  if (!name.IsExact()) {
    reader.Refuse(entry, Say(Message::NotInCodePageName, utf8, name.unmappable));
  }
  const bool hasControls = std::any_of(name.text.begin(), name.text.end(),
                                       [](char c) { return static_cast<uint8_t>(c) < 32; });
  if (utf8.empty() || utf8.front() == ' ' || utf8.back() == ' ' || hasControls) {
    reader.Refuse(entry, Say(Message::PlainNameExpected, entry));
  }
  if (name.text.size() > limit) {
    reader.Refuse(entry, Say(Message::NameTooLong, utf8, name.text.size(), limit));
  }
  return name.text;
}

Schema ParseSchema(std::string_view text, std::string_view fileName,
                   const std::filesystem::path& directory) {
  try {
    const toml::table document = toml::parse(text, fileName);
    return SchemaReader(fileName, directory).Read(document);
  } catch (const toml::parse_error& error) {
    throw BadInput(fileName, {error.source().begin.line, error.source().begin.column},
                   error.description());
  }
}

Schema ReadSchemaFile(const std::filesystem::path& path) {
  return ParseSchema(ReadWholeFile(path), PathToUtf8(path), path.parent_path());
}

}  // namespace qrndata
